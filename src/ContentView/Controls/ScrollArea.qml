// SPDX-License-Identifier: Apache-2.0
// Content that scrolls if taller than the area.
import QtQuick
import QtQuick.Controls.Basic

Item {
    id: area

    default property alias content: flickable.flickableData
    property alias contentHeight: flickable.contentHeight
    readonly property alias contentY: flickable.contentY
    readonly property bool isScrollable: contentHeight > height
    property int scrollBarInset: -bar.width - 4

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
        clip: area.isScrollable
        ScrollBar.vertical: bar
    }

    ThinScrollBar {
        id: bar

        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        anchors.rightMargin: area.scrollBarInset
    }
}
