// SPDX-License-Identifier: Apache-2.0
// Asks whether a risky action may be carried out. While shown, it holds the keyboard focus: Return allows, Escape
// declines, Tab cycles through the buttons.
import QtQuick
import QtQuick.Layouts

FocusScope {
    id: card

    required property string reason

    signal answered(bool allowed)

    implicitWidth: 420
    implicitHeight: layout.implicitHeight + 2 * layout.anchors.margins
    Accessible.role: Accessible.Dialog
    Accessible.name: "Confirm action"
    Accessible.description: reason
    onReasonChanged: scroll.toStart()

    Keys.onEscapePressed: answered(false)
    Keys.onReturnPressed: event => allowByKey(event)
    Keys.onEnterPressed: event => allowByKey(event)
    Keys.onTabPressed: cancelButton.forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: allowButton.forceActiveFocus(Qt.BacktabFocusReason)
    Keys.onPressed: event => scroll.pressKey(event)

    // An auto-repeated Return, held since before the question, is no answer.
    function allowByKey(event: KeyEvent) {
        if (!event.isAutoRepeat)
            answered(true);
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
            spacing: 10

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: "exclamationmark.shield.fill"
                tint: Theme.warning
                size: 20
            }

            StaticText {
                anchors.verticalCenter: parent.verticalCenter
                text: "Confirm action"
                font.pixelSize: 15
                font.weight: Font.DemiBold
                color: Theme.primary
            }
        }

        Separator {
            Layout.fillWidth: true
            visible: scroll.isScrollable
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
                text: card.reason
                font.pixelSize: 13
            }
        }

        Separator {
            Layout.fillWidth: true
            visible: scroll.isScrollable
        }

        RowLayout {
            Layout.alignment: Qt.AlignRight
            Layout.topMargin: 4
            spacing: 10

            TextButton {
                id: cancelButton

                text: "Cancel"
                KeyNavigation.tab: allowButton
                KeyNavigation.backtab: allowButton
                onClicked: card.answered(false)
            }

            TextButton {
                id: allowButton

                text: "Allow"
                prominent: true
                KeyNavigation.tab: cancelButton
                KeyNavigation.backtab: cancelButton
                onClicked: card.answered(true)
            }
        }
    }
}
