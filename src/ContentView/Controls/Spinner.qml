// SPDX-License-Identifier: Apache-2.0
// Busy indicator. It turns in eight steps, and only while visible: smooth animation would redraw the window sixty times
// a second while the model needs the CPU.
import QtQuick

Item {
    id: spinner

    property int phase: 0

    implicitWidth: 14
    implicitHeight: 14
    Accessible.role: Accessible.Animation
    Accessible.name: "Busy"

    Timer {
        interval: 110
        repeat: true
        running: spinner.visible && spinner.Window.visibility !== Window.Hidden && spinner.Window.visibility !== Window.Minimized
        onTriggered: spinner.phase = (spinner.phase + 1) % 8
    }

    Repeater {
        model: 8

        // qmllint disable unqualified
        Rectangle {
            required property int index

            x: spinner.width / 2 - width / 2
            width: spinner.width / 8
            height: spinner.height * 0.3
            radius: width / 2
            color: Theme.secondary
            opacity: 1 - 0.11 * ((spinner.phase - index + 8) % 8)
            antialiasing: true
            transform: Rotation {
                origin.x: spinner.width / 16
                origin.y: spinner.height / 2
                angle: index * 45
            }
        }
        // qmllint enable unqualified
    }
}
