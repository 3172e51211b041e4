// SPDX-License-Identifier: Apache-2.0
// The top row: status symbol, command field, and the button that sends or stops a task.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Orvane.ContentView

FocusScope {
    id: bar

    required property ContentViewModel content
    readonly property alias field: field
    property alias keepsSelection: field.persistentSelection // while another item has the focus

    // Emitted on a right click in the field.
    signal menuRequested

    function focusField() {
        field.forceActiveFocus();
    }

    // Types a character that no other item handled into the field.
    function typeKey(event: KeyEvent) {
        const isCommand = event.modifiers & (Qt.ControlModifier | Qt.MetaModifier);
        const isCharacter = event.text >= " " && event.text !== "\x7f";
        event.accepted = field.enabled && isCharacter && !isCommand;
        if (!event.accepted)
            return;
        focusField();
        field.insert(field.cursorPosition, event.text);
    }

    implicitHeight: 76

    // A hidden button must not keep the focus.
    Connections {
        target: bar.content
        function onIsRunningChanged() {
            field.focus = true;
        }
    }

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin - 6
        spacing: 14

        SymbolIcon {
            name: bar.content.leadingSymbol
            tint: bar.content.isRunning ? Theme.accent : Theme.secondary
            size: 22
        }

        TextField {
            id: field

            Layout.fillWidth: true
            focus: true
            enabled: !bar.content.isRunning
            text: bar.content.input
            placeholderText: bar.content.placeholder
            padding: 0
            leftPadding: 0
            font.pixelSize: 24
            font.weight: Font.Normal
            color: Theme.primary
            placeholderTextColor: Theme.placeholder
            selectionColor: Theme.selection
            selectedTextColor: Theme.primary
            selectByMouse: true
            clip: true
            background: null
            // A blinking cursor would wake up the idle process.
            // qmllint disable unqualified
            cursorDelegate: Rectangle {
                width: 2
                radius: 1
                color: Theme.accent
                visible: field.cursorVisible
            }
            // qmllint enable unqualified
            Accessible.role: Accessible.EditableText
            Accessible.name: placeholderText
            // Qt does not report a disabled field to screen readers.
            Accessible.readOnly: !enabled
            onTextChanged: bar.content.input = text
            onAccepted: bar.content.send()

            // Handles right clicks before the field does, which would clear its selection.
            MouseArea {
                anchors.fill: parent
                acceptedButtons: Qt.RightButton
                cursorShape: Qt.IBeamCursor
                onClicked: {
                    bar.focusField();
                    bar.menuRequested();
                }
            }
        }

        // Two buttons, so that a key meant for one cannot press the other.
        IconButton {
            Layout.preferredWidth: 36
            Layout.preferredHeight: 36
            text: "Send"
            symbol: "arrow.up.circle.fill"
            symbolSize: 24
            tint: Theme.accent
            enabled: !bar.content.isRunning
            visible: enabled
            onClicked: bar.content.send()
        }

        IconButton {
            Layout.preferredWidth: 36
            Layout.preferredHeight: 36
            text: "Stop"
            help: "Stop"
            symbol: "stop.circle.fill"
            symbolSize: 22
            tint: Theme.primary
            enabled: bar.content.isRunning
            visible: enabled
            onClicked: bar.content.stop()
        }
    }
}
