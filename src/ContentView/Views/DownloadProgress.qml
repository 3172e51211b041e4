// SPDX-License-Identifier: Apache-2.0
// Download progress and a cancel button.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

ColumnLayout {
    id: download

    required property real progress
    required property string text

    signal canceled

    spacing: 8

    ProgressBar {
        id: bar

        Layout.preferredWidth: 300
        Layout.alignment: Qt.AlignHCenter
        value: download.progress
        padding: 0
        Accessible.role: Accessible.ProgressBar
        Accessible.name: "Download"

        contentItem: Item {
            implicitWidth: 300
            implicitHeight: 6

            Rectangle {
                width: Math.max(height, bar.visualPosition * parent.width)
                height: parent.height
                radius: height / 2
                color: Theme.accent
                visible: bar.visualPosition > 0
            }
        }

        background: Rectangle {
            implicitWidth: 300
            implicitHeight: 6
            radius: 3
            color: Theme.track
        }
    }

    StaticText {
        Layout.alignment: Qt.AlignHCenter
        text: download.text
        font.pixelSize: 12
        color: Theme.secondary
    }

    LinkButton {
        Layout.alignment: Qt.AlignHCenter
        text: "Cancel"
        onClicked: download.canceled()
    }
}
