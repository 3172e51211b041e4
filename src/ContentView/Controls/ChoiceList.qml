// SPDX-License-Identifier: Apache-2.0
// A list to choose one or several items from. The arrow keys move, the space bar chooses or drops an item; without
// `takesSeveral` the current item is the chosen one.
import QtQuick
import QtQuick.Controls.Basic

FocusScope {
    id: list

    property alias items: view.model
    property bool takesSeveral: false
    property var chosen: [] // a list of indices

    readonly property int rowHeight: 30

    // Emitted on a double click.
    signal accepted

    // Replaces the choice, and shows it.
    function choose(indices: var) {
        chosen = indices;
        view.currentIndex = indices.length > 0 ? indices[0] : -1;
        view.positionViewAtIndex(Math.max(0, view.currentIndex), ListView.Contain);
    }

    function toggle(index: int) {
        if (index < 0)
            return;
        const isChosen = chosen.indexOf(index) >= 0;
        if (!takesSeveral)
            chosen = [index];
        else
            chosen = isChosen ? chosen.filter(one => one !== index) : chosen.concat([index]);
    }

    function moveBy(distance: int) {
        const next = Math.min(Math.max(view.currentIndex + distance, 0), view.count - 1);
        view.currentIndex = next;
        if (!takesSeveral)
            toggle(next);
    }

    implicitHeight: Math.min(view.count, 8) * rowHeight + 2
    Accessible.role: Accessible.List
    Accessible.name: "Choices"
    Keys.onUpPressed: moveBy(-1)
    Keys.onDownPressed: moveBy(1)
    Keys.onSpacePressed: toggle(view.currentIndex)

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: "transparent"
        border.width: 1
        border.color: Theme.edge
    }

    ListView {
        id: view

        anchors.fill: parent
        anchors.margins: 1
        focus: true
        clip: true
        keyNavigationEnabled: false
        currentIndex: -1
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ThinScrollBar {
        }
        // qmllint disable unqualified
        delegate: ItemDelegate {
            id: row

            required property int index
            required property string modelData
            readonly property bool isChosen: list.chosen.indexOf(index) >= 0

            width: ListView.view.width
            height: list.rowHeight
            focusPolicy: Qt.NoFocus
            text: modelData
            font.pixelSize: 13
            leftPadding: 12
            rightPadding: 12
            Accessible.role: Accessible.ListItem
            Accessible.name: text
            Accessible.selectable: true
            Accessible.selected: isChosen
            Accessible.onPressAction: clicked()
            onClicked: {
                list.forceActiveFocus();
                ListView.view.currentIndex = index;
                list.toggle(index);
            }
            onDoubleClicked: {
                if (!list.takesSeveral)
                    list.accepted();
            }

            contentItem: Text {
                text: row.text
                textFormat: Text.PlainText
                font: row.font
                elide: Text.ElideRight
                verticalAlignment: Text.AlignVCenter
                color: row.isChosen ? Theme.prominentText : Theme.primary
            }

            background: Rectangle {
                radius: Theme.controlRadius
                color: row.isChosen ? Theme.prominent : "transparent"

                FocusRing {
                    anchors.margins: 0
                    radius: Theme.controlRadius
                    visible: list.activeFocus && row.ListView.isCurrentItem
                }
            }
        }
        // qmllint enable unqualified
    }
}
