// SPDX-License-Identifier: Apache-2.0
// An example task; pressing it fills the command field.
import QtQuick
import QtQuick.Layouts

PaletteButton {
    id: row

    leftPadding: 12
    rightPadding: 16
    topPadding: 9
    bottomPadding: 9
    cornerRadius: 10
    font.pixelSize: 13

    contentItem: RowLayout {
        spacing: 12

        SymbolIcon {
            name: "arrow.turn.down.right"
            tint: row.hovered || row.visualFocus ? Theme.accent : Theme.secondary
            size: 14
        }

        Text {
            Layout.fillWidth: true
            text: row.text
            textFormat: Text.PlainText
            font.pixelSize: row.font.pixelSize
            color: Theme.primary
            wrapMode: Text.Wrap
        }
    }

    background: HoverSurface {
        radius: row.cornerRadius
        down: row.down
        hovered: row.hovered
    }
}
