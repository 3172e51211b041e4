// SPDX-License-Identifier: Apache-2.0
// Base of all buttons: Return presses like the space bar, screen readers can press, the keyboard focus is visible. A
// click leaves the focus where it is, so that the user can go on typing.
import QtQuick
import QtQuick.Controls.Basic

AbstractButton {
    id: button

    property int cornerRadius: Theme.controlRadius

    function pressByKey(event: KeyEvent) {
        event.accepted = true;
        if (!event.isAutoRepeat)
            clicked();
    }

    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: event => pressByKey(event)
    Keys.onEnterPressed: event => pressByKey(event)

    FocusRing {
        radius: button.cornerRadius + gap
        visible: button.visualFocus
    }
}
