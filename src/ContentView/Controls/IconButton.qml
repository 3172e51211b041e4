// SPDX-License-Identifier: Apache-2.0
// A button with a symbol; its text is for screen readers.
import QtQuick

PaletteButton {
    id: button

    required property string symbol
    required property color tint
    required property int symbolSize
    property string help: ""

    padding: 6
    cornerRadius: height / 2

    Hint {
        text: button.help
        visible: button.hovered && text !== ""
    }

    contentItem: Item {
        implicitWidth: button.symbolSize
        implicitHeight: button.symbolSize

        SymbolIcon {
            anchors.centerIn: parent
            name: button.symbol
            tint: button.tint
            size: button.symbolSize
        }
    }

    background: HoverSurface {
        radius: button.cornerRadius
        down: button.down
        hovered: button.hovered
    }
}
