// SPDX-License-Identifier: Apache-2.0
// Text that can be selected and copied, and that a screen reader takes for what it is: text, not a field. It wraps
// rather than to hide anything. It takes the keyboard only for what is selected, so that this can be copied: a mere
// click leaves the keyboard where the user types.
import QtQuick

TextEdit {
    readOnly: true
    selectByMouse: true
    activeFocusOnPress: false
    activeFocusOnTab: false
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    color: Theme.primary
    selectionColor: Theme.selection
    selectedTextColor: color
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    onSelectedTextChanged: {
        if (selectedText !== "")
            forceActiveFocus(Qt.MouseFocusReason);
    }

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
