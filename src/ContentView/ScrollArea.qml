// SPDX-License-Identifier: Apache-2.0
// Content that scrolls when it is taller than the room for it.
import QtQuick
import QtQuick.Controls.Basic

Item {
    id: area

    default property alias content: flickable.flickableData
    property alias contentHeight: flickable.contentHeight
    readonly property alias contentY: flickable.contentY

    function pressKey(event: KeyEvent) {
        input.pressKey(event);
    }

    function toStart() {
        flickable.contentY = 0;
    }

    ScrollInput {
        id: input

        anchors.fill: parent
        view: flickable
    }

    Flickable {
        id: flickable

        anchors.fill: parent
        contentWidth: width
        interactive: false
        clip: contentHeight > height
        ScrollBar.vertical: ThinScrollBar {
            parent: area
            anchors.top: area.top
            anchors.bottom: area.bottom
            anchors.left: area.right
            anchors.leftMargin: 2
        }
    }
}
