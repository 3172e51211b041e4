// SPDX-License-Identifier: Apache-2.0
// Says why most tasks cannot work in this session; always shown under the command bar then.
import QtQuick
import QtQuick.Layouts
import Orvane.ContentView

Item {
    id: strip

    required property string text

    implicitHeight: row.implicitHeight + 24

    RowLayout {
        id: row

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin
        spacing: 10

        SymbolIcon {
            Layout.alignment: Qt.AlignTop
            name: "exclamationmark.shield.fill"
            tint: Theme.warning
            size: 16
        }

        SelectableText {
            Layout.fillWidth: true
            text: strip.text
            font.pixelSize: 13
            color: Theme.warningText
        }
    }
}
