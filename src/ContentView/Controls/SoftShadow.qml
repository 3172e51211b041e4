// SPDX-License-Identifier: Apache-2.0
// A shadow that fades out around a rounded card, from plain rectangles: it looks the same without a graphics card.
import QtQuick

Item {
    id: shadow

    required property real radius
    required property real strength
    property int reach: 32

    Repeater {
        model: shadow.reach / 2

        // Each lies within the one before and is a little darker; where all of them overlap, inside the card's own
        // edge, their sum is about the full strength.
        // qmllint disable unqualified
        Rectangle {
            required property int index
            readonly property int layers: shadow.reach / 2
            readonly property int spread: shadow.reach - 8 - 2 * index

            anchors.fill: parent
            anchors.margins: -spread
            radius: Math.max(0, shadow.radius + spread)
            color: Qt.rgba(0, 0, 0, shadow.strength * 2 * (index + 1) / (layers * (layers + 1)))
        }
        // qmllint enable unqualified
    }
}
