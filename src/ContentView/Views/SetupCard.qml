// SPDX-License-Identifier: Apache-2.0
// Model choice, download and failure; shown until a model is loaded.
import QtQuick
import QtQuick.Layouts
import Orvane.ContentView

ScrollArea {
    id: card

    required property SetupViewModel setup

    scrollBarInset: 6
    contentHeight: Math.max(height, column.implicitHeight + 32)

    ColumnLayout {
        id: column

        anchors.centerIn: parent
        width: Math.min(420, parent.width - 2 * Theme.margin)
        spacing: 0

        SymbolIcon {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 12
            name: "cpu"
            tint: Theme.accent
            size: 38
        }

        StaticText {
            Layout.fillWidth: true
            Layout.bottomMargin: 8
            text: "Set up your private AI"
            font.pixelSize: 20
            font.weight: Font.DemiBold
            color: Theme.primary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }

        StaticText {
            Layout.fillWidth: true
            Layout.bottomMargin: 20
            text: card.setup.explanation
            font.pixelSize: 13
            lineHeight: 1.25
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }

        ModelPicker {
            Layout.alignment: Qt.AlignHCenter
            Layout.fillWidth: true
            Layout.maximumWidth: 360
            Layout.bottomMargin: 20
            choices: card.setup.choices
            selected: card.setup.selectedModel
            onChosen: index => card.setup.select(index)
        }

        TextButton {
            Layout.alignment: Qt.AlignHCenter
            text: card.setup.downloadLabel
            prominent: true
            visible: card.setup.step === SetupViewModel.NeedsDownload
            onClicked: card.setup.download()
        }

        DownloadProgress {
            Layout.alignment: Qt.AlignHCenter
            progress: card.setup.progress
            text: card.setup.progressText
            visible: card.setup.step === SetupViewModel.Downloading
            onCanceled: card.setup.cancel()
        }

        Row {
            Layout.alignment: Qt.AlignHCenter
            spacing: 8
            visible: card.setup.step === SetupViewModel.Loading

            Spinner {
                anchors.verticalCenter: parent.verticalCenter
            }

            StaticText {
                text: "Loading model…"
                font.pixelSize: 13
                color: Theme.secondary
            }
        }

        SetupFailure {
            Layout.fillWidth: true
            message: card.setup.message
            visible: card.setup.step === SetupViewModel.Failed
            onRetryRequested: card.setup.tryAgain()
        }
    }
}
