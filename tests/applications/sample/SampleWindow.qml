// SPDX-License-Identifier: Apache-2.0
// The main window. Its title is for the tests: the document's name, an asterisk if it has unsaved changes,
// and the button or menu item pressed last.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Orvane.DesktopSample

ApplicationWindow {
    id: window

    required property SampleDocument document
    required property KeyReport report
    readonly property bool isModified: area.text !== document.savedText
    property string pressed: "nothing"

    width: 640
    height: 420
    visible: true
    title: `${isModified ? "*" : ""}${document.name} (pressed: ${pressed}) – Sample`

    onClosing: close => {
        close.accepted = !isModified;
        question.visible = isModified;
        second.visible = second.visible && isModified;
    }

    menuBar: MenuBar {
        delegate: MenuBarItem {
            Accessible.onPressAction: triggered()
        }

        Menu {
            title: "&File"

            PressMenuItem {
                text: "Save"
                onTriggered: window.document.save(area.text)
            }

            PressMenuItem {
                text: "Stamp from the menu"
                onTriggered: window.pressed = text
            }
        }
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 8

        RowLayout {
            PressButton {
                text: "Stamp twice"
                onClicked: window.pressed = text
            }

            PressButton {
                text: "Stamp"
                onClicked: window.pressed = text
            }

            PressButton {
                text: "Open another window"
                onClicked: second.visible = true
            }
        }

        TextArea {
            id: area

            Layout.fillWidth: true
            Layout.fillHeight: true
            Accessible.name: "Document"
            focus: !window.report.isWanted
            text: window.document.savedText
        }

        TextField {
            Layout.fillWidth: true
            Accessible.name: "Keys"
            focus: window.report.isWanted
            placeholderText: "Keys pressed here are reported"
            Keys.priority: Keys.BeforeItem
            Keys.onShortcutOverride: event => event.accepted = true
            Keys.onPressed: event => {
                event.accepted = true;
                if ([Qt.Key_Shift, Qt.Key_Control, Qt.Key_Alt].includes(event.key))
                    return;
                text = window.report.add(event.key, event.modifiers);
            }
        }
    }

    Shortcut {
        sequences: [StandardKey.Save]
        onActivated: window.document.save(area.text)
    }

    SecondWindow {
        id: second
    }

    SaveQuestion {
        id: question

        transientParent: window
        onSaveChosen: {
            window.document.save(area.text);
            window.close();
        }
        onDiscardChosen: {
            area.text = window.document.savedText;
            window.close();
        }
    }
}
