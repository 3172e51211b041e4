// SPDX-License-Identifier: Apache-2.0
// The window's content: command bar, middle layer, footer, and over the middle the card of an open question.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Orvane.ContentView

FocusScope {
    id: root

    required property ContentViewModel content

    signal hideRequested
    signal quitRequested

    readonly property bool isAsking: content.isConfirming || content.dialog.isOpen

    // Focuses the open question's card if there is one, otherwise the command field.
    function takeFocus() {
        if (content.isConfirming)
            card.forceActiveFocus();
        else if (content.dialog.isOpen)
            dialogCard.takeFocus();
        else
            commandBar.focusField();
    }

    function openMenu() {
        menu.field = commandBar.field.activeFocus ? commandBar.field : null;
        menu.popup(commandBar, Theme.margin, commandBar.height);
    }

    function openMenuAtPointer(field: TextField) {
        menu.field = field;
        menu.popup();
    }

    focus: true
    Keys.onPressed: event => commandBar.typeKey(event)

    // Let the question be answered wherever the focus is; the cards handle their own keys.
    Shortcut {
        sequences: ["Return", "Enter"]
        autoRepeat: false
        enabled: root.content.isConfirming && !card.activeFocus
        onActivated: root.content.resolve(true)
    }

    Shortcut {
        sequence: "Escape"
        autoRepeat: false
        enabled: root.content.isConfirming && !card.activeFocus
        onActivated: root.content.resolve(false)
    }

    Shortcut {
        sequences: ["Return", "Enter"]
        autoRepeat: false
        enabled: root.content.dialog.isOpen && !dialogCard.activeFocus
        onActivated: dialogCard.press(root.content.dialog.defaultButton)
    }

    Shortcut {
        sequence: "Escape"
        autoRepeat: false
        enabled: root.content.dialog.isOpen && !dialogCard.activeFocus
        onActivated: dialogCard.press(root.content.dialog.cancelButton)
    }

    Connections {
        target: root.content.dialog
        function onChanged() {
            menu.close();
            root.takeFocus();
        }
    }

    Connections {
        target: root.content
        function onFocusRequested() {
            root.takeFocus();
        }
        function onConfirmationChanged() {
            // A question takes precedence over an open menu.
            menu.close();
            root.takeFocus();
        }
        function onIsRunningChanged() {
            reclaiming.restart();
        }
        function onAnnouncementChanged() {
            announcer.say(root.content.announcement);
        }
    }

    // The live reply disappears when the task ends; if its selection had the focus, the focus returns to the field.
    Timer {
        id: reclaiming

        interval: 0
        onTriggered: {
            if (!root.Window.activeFocusItem?.visible)
                root.takeFocus();
        }
    }

    // No TapHandler: on Wayland, Qt 6.4 takes every mouse for a touchpad, whose taps count whatever the button.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onClicked: root.openMenuAtPointer(null)
    }

    Announcer {
        id: announcer
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        CommandBar {
            id: commandBar

            Layout.fillWidth: true
            focus: true
            content: root.content
            keepsSelection: menu.visible
            onMenuRequested: root.openMenuAtPointer(field)
        }

        Separator {
            Layout.fillWidth: true
        }

        ObstacleStrip {
            Layout.fillWidth: true
            text: root.content.obstacle
            visible: text.length > 0
        }

        Item {
            id: middle

            Layout.fillWidth: true
            Layout.fillHeight: true

            // Nothing behind the question is usable until it is answered.
            Item {
                anchors.fill: parent
                enabled: !root.isAsking

                SetupCard {
                    anchors.fill: parent
                    setup: root.content.setup
                    visible: root.content.layer === ContentViewModel.Setup
                }

                EmptyState {
                    anchors.fill: parent
                    suggestions: root.content.suggestions
                    visible: root.content.layer === ContentViewModel.Empty
                    onChosen: index => {
                        root.content.useSuggestion(index);
                        root.takeFocus();
                    }
                }

                History {
                    anchors.fill: parent
                    content: root.content
                    visible: root.content.layer === ContentViewModel.History
                }
            }

            ConfirmationCard {
                id: card

                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.width - 2 * Theme.margin)
                height: Math.min(implicitHeight, parent.height - 32)
                enabled: root.content.isConfirming
                opacity: enabled ? 1 : 0
                visible: enabled || opacity > 0
                onAnswered: allowed => root.content.resolve(allowed)

                // Keeps the question readable while the card fades out.
                Binding on reason  {
                    when: root.content.isConfirming
                    value: root.content.confirmationReason
                    restoreMode: Binding.RestoreNone
                }

                Behavior on opacity  {
                    NumberAnimation {
                        duration: 150
                    }
                }
            }

            DialogCard {
                id: dialogCard

                anchors.centerIn: parent
                width: Math.min(implicitWidth, parent.width - 2 * Theme.margin)
                height: Math.min(implicitHeight, parent.height - 32)
                dialog: root.content.dialog
                enabled: dialog.isOpen
                opacity: enabled ? 1 : 0
                visible: enabled || opacity > 0

                Behavior on opacity  {
                    NumberAnimation {
                        duration: 150
                    }
                }
            }
        }

        Footer {
            Layout.fillWidth: true
            content: root.content
        }
    }

    ContextMenu {
        id: menu

        content: root.content
        onHideRequested: root.hideRequested()
        onQuitRequested: root.quitRequested()
    }
}
