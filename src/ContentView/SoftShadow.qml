// SPDX-License-Identifier: Apache-2.0
// A shadow that falls off evenly around a rounded card, from plain rectangles: it looks the same without a graphics card.
import QtQuick

Item {
    id: shadow

    required property real radius
    required property real strength
    property int reach: 24

    Repeater {
        model: shadow.reach / 2

        // Each lies within the one before; where all of them overlap their sum is the full strength.
        // qmllint disable unqualified
        Rectangle {
            required property int index
            readonly property int spread: shadow.reach - 2 * index

            anchors.fill: parent
            anchors.margins: -spread
            radius: shadow.radius + spread
            color: Qt.rgba(0, 0, 0, 1 - Math.pow(1 - shadow.strength, 2 / shadow.reach))
        }
        // qmllint enable unqualified
    }
}
