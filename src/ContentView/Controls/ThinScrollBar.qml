// SPDX-License-Identifier: Apache-2.0
// A scroll bar shown only if there is something to scroll.
import QtQuick
import QtQuick.Controls.Basic

ScrollBar {
    id: bar

    padding: 2
    visible: size < 1
    minimumSize: 0.1
    Accessible.name: "Scroll"

    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: Theme.secondary
        opacity: bar.pressed ? 0.8 : bar.hovered ? 0.6 : 0.35
    }
}
