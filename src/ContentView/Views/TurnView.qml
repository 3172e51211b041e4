// SPDX-License-Identifier: Apache-2.0
// One task: the command, its log, and an optional summary.
import QtQuick
import Orvane.ContentView

Column {
    id: turn

    required property string command
    required property LogListModel log
    required property string summary

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

    SelectableText {
        leftPadding: 24 // in line with the log's texts
        width: turn.width - 2 * Theme.margin
        text: turn.summary
        font.pixelSize: 13
        visible: text !== ""
    }
}
