// SPDX-License-Identifier: Apache-2.0
// A bordered text button; the prominent one is the default answer.
import QtQuick

PaletteButton {
    id: button

    property bool prominent: false

    leftPadding: 16
    rightPadding: 16
    topPadding: 7
    bottomPadding: 7
    font.pixelSize: 13
    font.weight: Font.Medium

    contentItem: Text {
        text: button.text
        textFormat: Text.PlainText
        font: button.font
        color: button.prominent ? Theme.prominentText : Theme.primary
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        implicitWidth: 76
        implicitHeight: 32
        radius: button.cornerRadius
        color: button.prominent ? Theme.prominent : Theme.control
        border.width: button.prominent ? 0 : 1
        border.color: Theme.edge

        HoverSurface {
            anchors.fill: parent
            radius: parent.radius
            down: button.down
            hovered: button.hovered
        }
    }
}
