// SPDX-License-Identifier: Apache-2.0
// The row at the top: what is going on, the field for the task, and the button that starts or stops it.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Orvane.ContentView

FocusScope {
    id: bar

    required property ContentViewModel content
    readonly property alias field: field
    property alias keepsSelection: field.persistentSelection // while something else has the focus

    // A right click in the field.
    signal menuRequested

    function focusField() {
        field.forceActiveFocus();
    }

    // Writes a character into the field that nothing else in the window had a use for.
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

    // A button that goes leaves the keyboard to the field.
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
            // A cursor that does not blink: the idle window wakes nobody up.
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
            // Screen readers are not told that it is disabled.
            Accessible.readOnly: !enabled
            onTextChanged: bar.content.input = text
            onAccepted: bar.content.send()

            // Before the field itself, which would give its selection up.
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

        // Two buttons that take turns: a key that was meant for the one cannot press the other.
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
