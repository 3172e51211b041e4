// SPDX-License-Identifier: Apache-2.0
// The footer's model menu: the selected model's name and a popup list above it.
import QtQuick
import QtQml.Models

PaletteButton {
    id: button

    required property var names // a list of strings
    required property int selected

    signal chosen(int index)

    function openMenu() {
        menu.popup(button, button.width - menu.width, -menu.height - 6);
        menu.currentIndex = selected;
    }

    padding: 4
    leftPadding: 8
    rightPadding: 8
    cornerRadius: 6
    font.pixelSize: 12
    Accessible.role: Accessible.ButtonMenu
    Accessible.description: "Model"
    Keys.onUpPressed: openMenu()
    Keys.onDownPressed: openMenu()
    onClicked: openMenu()
    onEnabledChanged: menu.close()

    contentItem: Row {
        spacing: 6
        opacity: button.enabled ? 1 : 0.4

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: button.text
            textFormat: Text.PlainText
            font.pixelSize: button.font.pixelSize
            color: Theme.secondary
        }

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.down"
            tint: Theme.secondary
            size: 10
        }
    }

    background: HoverSurface {
        radius: button.cornerRadius
        down: button.down || menu.visible
        hovered: button.hovered
    }

    PaletteMenu {
        id: menu

        title: "Model"

        Instantiator {
            model: button.names
            // qmllint disable unqualified
            delegate: PaletteMenuItem {
                required property string modelData
                required property int index

                text: modelData
                choice: true
                current: index === button.selected
                enabled: button.enabled
                onTriggered: button.chosen(index)
            }
            // qmllint enable unqualified
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }
    }
}
