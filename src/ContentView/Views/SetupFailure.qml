// SPDX-License-Identifier: Apache-2.0
// Why there is no model, and a button to try again.
import QtQuick
import QtQuick.Layouts

ColumnLayout {
    id: failure

    required property string message

    signal retryRequested

    spacing: 14

    SelectableText {
        Layout.fillWidth: true
        text: failure.message
        font.pixelSize: 12
        color: Theme.bad
        horizontalAlignment: TextEdit.AlignHCenter
    }

    TextButton {
        Layout.alignment: Qt.AlignHCenter
        text: "Try again"
        onClicked: failure.retryRequested()
    }
}
