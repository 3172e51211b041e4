// SPDX-License-Identifier: Apache-2.0
// Prompts the user to save or discard unsaved changes.
import QtQuick

Window {
    id: question

    signal saveChosen
    signal discardChosen

    flags: Qt.Dialog
    modality: Qt.ApplicationModal
    width: 360
    height: 120
    title: "Save changes?"

    Row {
        anchors.centerIn: parent
        spacing: 8

        PressButton {
            text: "Discard"
            onClicked: question.discardChosen()
        }

        PressButton {
            text: "Keep editing"
            onClicked: question.close()
        }

        PressButton {
            text: "Save and close"
            onClicked: question.saveChosen()
        }
    }
}
