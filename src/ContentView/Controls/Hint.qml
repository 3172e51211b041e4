// SPDX-License-Identifier: Apache-2.0
// A tooltip.
import QtQuick
import QtQuick.Controls.Basic

ToolTip {
    id: hint

    y: parent ? parent.height + 4 : 0
    delay: 700
    leftPadding: 8
    rightPadding: 8
    topPadding: 4
    bottomPadding: 4

    contentItem: Text {
        text: hint.text
        textFormat: Text.PlainText
        font.pixelSize: 12
        color: Theme.primary
    }

    background: Rectangle {
        radius: 6
        color: Theme.card
        border.width: 1
        border.color: Theme.edge
    }
}
