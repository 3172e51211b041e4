// SPDX-License-Identifier: Apache-2.0
// The background of a card over the content: with a shadow, and closed to clicks on what is behind it.
import QtQuick

Item {
    SoftShadow {
        anchors.fill: parent
        anchors.topMargin: 8
        anchors.bottomMargin: -8
        radius: surface.radius
        strength: 0.25
    }

    Rectangle {
        id: surface

        anchors.fill: parent
        radius: 16
        color: Theme.card
        border.width: 1
        border.color: Theme.edge
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
    }
}
