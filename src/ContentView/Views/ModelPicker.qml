// SPDX-License-Identifier: Apache-2.0
// The choice of a model on the setup card.
import QtQuick
import QtQuick.Controls.Basic

ComboBox {
    id: picker

    required property var choices // a list of strings
    required property int selected

    signal chosen(int index)

    // Opens on key release: a popup opened on the press would be closed by the release.
    function releaseKey(event: KeyEvent) {
        event.accepted = !popup.visible && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter);
        if (event.accepted && !event.isAutoRepeat)
            popup.open();
    }

    model: choices
    currentIndex: selected
    leftPadding: 12
    rightPadding: 34
    topPadding: 0
    bottomPadding: 0
    font.pixelSize: 13
    Accessible.role: Accessible.ComboBox
    Accessible.name: "Model"
    Accessible.description: displayText
    Accessible.onPressAction: popup.open()
    Keys.onReleased: event => releaseKey(event)
    // The view model decides the selection; a rejected choice must not stay displayed.
    onActivated: index => {
        chosen(index);
        currentIndex = Qt.binding(() => selected);
    }

    contentItem: Text {
        text: picker.displayText
        textFormat: Text.PlainText
        font: picker.font
        color: Theme.primary
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    indicator: SymbolIcon {
        x: picker.width - width - 12
        y: (picker.height - height) / 2
        name: "chevron.down"
        tint: Theme.secondary
        size: 12
    }

    background: Rectangle {
        implicitWidth: 360
        implicitHeight: 34
        radius: Theme.controlRadius
        color: Theme.control
        border.width: 1
        border.color: Theme.edge

        HoverSurface {
            anchors.fill: parent
            radius: parent.radius
            down: picker.down
            hovered: picker.hovered
        }

        FocusRing {
            visible: picker.visualFocus
        }
    }

    // qmllint disable unqualified
    delegate: ItemDelegate {
        id: row

        required property string modelData
        required property int index

        width: ListView.view.width
        height: 32
        leftPadding: 10
        rightPadding: 10
        text: modelData
        font.pixelSize: 13
        highlighted: picker.highlightedIndex === index
        Accessible.role: Accessible.ListItem
        Accessible.name: text
        Accessible.selected: picker.currentIndex === index
        Accessible.onPressAction: clicked()

        contentItem: Text {
            text: row.text
            textFormat: Text.PlainText
            font.pixelSize: 13
            font.weight: picker.currentIndex === row.index ? Font.Medium : Font.Normal
            color: Theme.primary
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
        }

        background: HoverSurface {
            radius: 6
            down: row.down
            hovered: row.hovered || row.highlighted
        }
    }

    // qmllint enable unqualified
    popup: Popup {
        y: picker.height + 4
        width: picker.width
        padding: 4
        // Popup is not an Item and has no Accessible properties; its popup item has.
        Component.onCompleted: contentItem.parent.Accessible.name = "Model"

        contentItem: ListView {
            implicitHeight: contentHeight
            model: picker.delegateModel
            currentIndex: picker.highlightedIndex
            interactive: false
        }

        background: PopupSurface {
        }
    }
}
