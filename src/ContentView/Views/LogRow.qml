// SPDX-License-Identifier: Apache-2.0
// One line of a task's log.
import QtQuick

Item {
    id: row

    required property string text
    required property string symbol
    required property int symbolRole
    required property int textRole
    required property bool running
    required property string spoken

    implicitHeight: line.implicitHeight

    FontMetrics {
        id: metrics

        font: line.font
    }

    Item {
        id: frame

        width: 14
        height: metrics.height

        SymbolIcon {
            anchors.centerIn: parent
            name: row.symbol
            tint: Theme.roleColor(row.symbolRole)
            size: 14
            visible: !row.running
        }

        Loader {
            anchors.centerIn: parent
            active: row.running
            sourceComponent: Spinner {
                Accessible.ignored: true
            }
        }
    }

    SelectableText {
        id: line

        anchors.left: frame.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        text: row.text
        font.pixelSize: 13
        color: Theme.roleColor(row.textRole)
        Accessible.description: row.spoken
    }
}
