// SPDX-License-Identifier: Apache-2.0
// A soft shadow around a rounded card, made of rectangles so that it looks the same in software rendering.
import QtQuick

Item {
    id: shadow

    required property real radius
    required property real strength
    property int reach: 32

    Repeater {
        model: shadow.reach / 2

        // Each layer is smaller and darker than the one before; inside the card's edge they add up to about `strength`.
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
