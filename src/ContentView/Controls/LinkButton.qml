// SPDX-License-Identifier: Apache-2.0
// A button that looks like a link, with an optional symbol before the text.
import QtQuick

PaletteButton {
    id: button

    property string symbol: ""
    property color tint: Theme.accent

    padding: 4
    leftPadding: 6
    rightPadding: 6
    cornerRadius: 6
    font.pixelSize: 12

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    contentItem: Row {
        spacing: 6

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            name: button.symbol
            tint: button.tint
            size: 13
            visible: name !== ""
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            textFormat: Text.PlainText
            font.pixelSize: button.font.pixelSize
            font.weight: Font.Medium
            font.underline: button.hovered
            color: button.tint
        }
    }

    background: Rectangle {
        radius: button.cornerRadius
        color: Theme.pressed
        visible: button.down
    }
}
