// SPDX-License-Identifier: Apache-2.0
// The running task's status and the model's streaming reply. Only its bottom padding takes space while idle.
import QtQuick

Item {
    id: live

    required property bool running
    required property string status
    required property string preview
    property int topPadding: 0
    property int bottomPadding: 0

    implicitHeight: (running ? topPadding + column.implicitHeight : 0) + bottomPadding

    Item {
        x: Theme.margin
        y: live.topPadding
        width: live.width - 2 * Theme.margin
        visible: live.running

        Spinner {
            y: Math.round((line.implicitHeight - height) / 2)
        }

        Column {
            id: column

            x: 24
            width: parent.width - x
            spacing: 6

            SelectableText {
                id: line

                width: column.width
                text: live.status
                font.pixelSize: 13
                font.weight: Font.Medium
            }

            GrowingText {
                width: column.width
                source: live.preview
                font.pixelSize: 11
                color: Theme.secondary
                visible: text !== ""
            }
        }
    }
}
