// SPDX-License-Identifier: Apache-2.0
// The bottom row: missing permission, model menu, and the on-device badge.
import QtQuick
import QtQuick.Layouts
import Orvane.ContentView

Item {
    id: footer

    required property ContentViewModel content

    implicitHeight: 44

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.margin - 6
        anchors.rightMargin: Theme.margin
        spacing: 10

        LinkButton {
            text: "Grant Accessibility access"
            symbol: "hand.raised.fill"
            tint: Theme.warningText
            visible: !footer.content.trusted
            onClicked: footer.content.grantAccess()
        }

        Item {
            Layout.fillWidth: true
        }

        ModelMenu {
            text: footer.content.modelName
            names: footer.content.modelNames
            selected: footer.content.selectedModel
            visible: footer.content.canChooseModel
            enabled: !footer.content.isRunning
            onChosen: index => footer.content.selectModel(index)
        }

        Row {
            spacing: 5
            Accessible.role: Accessible.StaticText
            Accessible.name: badge.text

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: "lock.fill"
                tint: Theme.secondary
                size: 12
            }

            Text {
                id: badge

                text: "On-device"
                textFormat: Text.PlainText
                font.pixelSize: 12
                color: Theme.secondary
                Accessible.ignored: true
            }
        }
    }
}
