// SPDX-License-Identifier: Apache-2.0
// One task: what the user asked for, and what became of it line by line.
import QtQuick
import Orvane.ContentView

Column {
    id: turn

    required property string command
    required property LogListModel log

    spacing: 8
    leftPadding: Theme.margin
    rightPadding: Theme.margin
    Accessible.role: Accessible.Grouping
    Accessible.name: command

    SelectableText {
        width: turn.width - 2 * Theme.margin
        bottomPadding: 2
        text: turn.command
        font.pixelSize: 15
        font.weight: Font.DemiBold
    }

    Repeater {
        model: turn.log

        LogRow {
            width: parent.width - 2 * Theme.margin
        }
    }
}
