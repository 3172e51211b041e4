// SPDX-License-Identifier: Apache-2.0
// Text that can be selected and copied, and that a screen reader takes for what it is: text, not a field. It wraps
// rather than to hide anything.
import QtQuick

TextEdit {
    readOnly: true
    selectByMouse: true
    activeFocusOnTab: false
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    color: Theme.primary
    selectionColor: Theme.selection
    selectedTextColor: color
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    HoverHandler {
        cursorShape: Qt.IBeamCursor
    }
}
