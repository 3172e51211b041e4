// SPDX-License-Identifier: Apache-2.0
// Background of menus and popups.
import QtQuick

Item {
    implicitWidth: 180

    SoftShadow {
        anchors.fill: surface
        anchors.topMargin: 4
        radius: surface.radius
        strength: 0.18
        reach: 20
    }

    Rectangle {
        id: surface

        anchors.fill: parent
        radius: 10
        color: Theme.card
        border.width: 1
        border.color: Theme.edge
    }
}
