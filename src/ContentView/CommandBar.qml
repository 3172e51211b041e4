// SPDX-License-Identifier: Apache-2.0
// The row at the top: what is going on, the field for the task, and the button that starts or stops it.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Orvane.ContentView

FocusScope {
    id: bar

    required property ContentViewModel content

    function focusField() {
        field.forceActiveFocus();
    }

    implicitHeight: 76

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
        }

        IconButton {
            Layout.preferredWidth: 36
            Layout.preferredHeight: 36
            text: bar.content.isRunning ? "Stop" : "Send"
            help: bar.content.isRunning ? "Stop" : ""
            symbol: bar.content.isRunning ? "stop.circle.fill" : "arrow.up.circle.fill"
            symbolSize: bar.content.isRunning ? 22 : 24
            tint: bar.content.isRunning ? Theme.primary : Theme.accent
            onClicked: {
                if (bar.content.isRunning)
                    bar.content.stop();
                else
                    bar.content.send();
            }
        }
    }
}
