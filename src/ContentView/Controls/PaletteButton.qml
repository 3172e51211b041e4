// SPDX-License-Identifier: Apache-2.0
// What all our buttons have in common: Return presses like the space bar does, a screen reader can press, and the
// keyboard focus can be seen. A click leaves the focus where it is: who presses a button goes on typing in the field.
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
