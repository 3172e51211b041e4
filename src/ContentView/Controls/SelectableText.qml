// SPDX-License-Identifier: Apache-2.0
// Wrapped text that can be selected and copied; static text to screen readers. It takes the keyboard focus only with a
// selection, so that the selection can be copied; a mere click leaves the focus where it is.
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
