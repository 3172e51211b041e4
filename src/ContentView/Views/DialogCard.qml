// SPDX-License-Identifier: Apache-2.0
// A script's question: a text, perhaps a text field or a list, and one to three buttons. While shown, it holds the
// keyboard focus: Return presses the default button, Escape the cancel button.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Orvane.ContentView

FocusScope {
    id: card

    required property DialogViewModel dialog
    readonly property bool lacksChoice: dialog.hasList && !dialog.takesNone && list.chosen.length === 0

    // Puts the focus where the answer is given.
    function takeFocus() {
        if (field.visible)
            field.forceActiveFocus();
        else if (list.visible)
            list.forceActiveFocus();
        else
            forceActiveFocus();
    }

    function press(button: int) {
        if (!dialog.isOpen || button < 0 || button === dialog.defaultButton && lacksChoice)
            return;
        dialog.press(button, field.text, list.chosen);
    }

    // An auto-repeated Return, held since before the question, is no answer.
    function pressByKey(event: KeyEvent, button: int) {
        if (!event.isAutoRepeat)
            press(button);
    }

    implicitWidth: 440
    implicitHeight: layout.implicitHeight + 2 * layout.anchors.margins
    Accessible.role: Accessible.Dialog
    Accessible.name: heading.text
    Accessible.description: question.text

    Keys.onEscapePressed: event => pressByKey(event, dialog.cancelButton)
    Keys.onReturnPressed: event => pressByKey(event, dialog.defaultButton)
    Keys.onEnterPressed: event => pressByKey(event, dialog.defaultButton)
    Keys.onPressed: event => scroll.pressKey(event)

    Connections {
        target: card.dialog
        // The card keeps its texts while it fades out.
        function onChanged() {
            if (!card.dialog.isOpen)
                return;
            heading.text = card.dialog.title.length > 0 ? card.dialog.title : "A script asks";
            question.text = card.dialog.text + (card.dialog.message.length > 0 ? "\n\n" + card.dialog.message : "");
            field.visible = card.dialog.hasField;
            field.echoMode = card.dialog.hidesText ? TextInput.Password : TextInput.Normal;
            field.text = card.dialog.initialText;
            field.selectAll();
            list.visible = card.dialog.hasList;
            list.takesSeveral = card.dialog.takesSeveral;
            list.items = card.dialog.items;
            list.choose(card.dialog.initiallyChosen);
            buttons.model = card.dialog.buttons;
            scroll.toStart();
        }
    }

    CardSurface {
        anchors.fill: parent
    }

    ColumnLayout {
        id: layout

        anchors.fill: parent
        anchors.margins: 20
        spacing: 12

        Row {
            Layout.fillWidth: true
            spacing: 10

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: "info.circle"
                tint: Theme.accent
                size: 20
            }

            StaticText {
                id: heading

                anchors.verticalCenter: parent.verticalCenter
                width: parent.width - 30
                elide: Text.ElideRight
                font.pixelSize: 15
                font.weight: Font.DemiBold
                color: Theme.primary
            }
        }

        ScrollArea {
            id: scroll

            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitHeight: contentHeight
            contentHeight: question.implicitHeight

            SelectableText {
                id: question

                width: parent.width
                font.pixelSize: 13
            }
        }

        TextField {
            id: field

            Layout.fillWidth: true
            visible: false
            font.pixelSize: 13
            color: Theme.primary
            selectionColor: Theme.selection
            selectedTextColor: Theme.primary
            selectByMouse: true
            Accessible.role: Accessible.EditableText
            Accessible.name: question.text
            background: Rectangle {
                radius: Theme.controlRadius
                color: Theme.control
                border.width: 1
                border.color: field.activeFocus ? Theme.accent : Theme.edge
            }
        }

        ChoiceList {
            id: list

            Layout.fillWidth: true
            Layout.maximumHeight: implicitHeight
            visible: false
            onAccepted: card.press(card.dialog.defaultButton)
        }

        RowLayout {
            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 4
            spacing: 10

            Repeater {
                id: buttons

                // qmllint disable unqualified
                TextButton {
                    required property int index
                    required property string modelData

                    Layout.maximumWidth: (layout.width - 20) / 3
                    text: modelData
                    prominent: index === card.dialog.defaultButton
                    enabled: !(prominent && card.lacksChoice)
                    opacity: enabled ? 1 : 0.5
                    onClicked: card.press(index)
                }
                // qmllint enable unqualified
            }
        }
    }
}
