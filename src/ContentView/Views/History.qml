// SPDX-License-Identifier: Apache-2.0
// All tasks of this session, oldest first, and the running task's live status. Scrolls to the end on changes and stays
// there while content grows, unless the user scrolls.
import QtQuick
import QtQuick.Controls.Basic
import Orvane.ContentView

Item {
    id: history

    required property ContentViewModel content
    readonly property alias view: list
    property bool following: true

    function follow() {
        following = true;
        later.restart();
    }

    // The list estimates the heights of items it has not laid out. So jump to the end first to learn its position, then
    // animate the last page. Later changes are caught up with afterwards.
    function scrollToEnd() {
        if (!following || bar.pressed || movement.running)
            return;
        const start = list.contentY;
        list.positionViewAtEnd();
        const end = list.contentY;
        if (Math.abs(end - start) < 1)
            return;
        list.contentY = end > start ? Math.max(start, end - list.height) : Math.min(start, end + list.height);
        movement.to = end;
        movement.start();
    }

    function pressKey(event: KeyEvent) {
        if (event.key === Qt.Key_Home) {
            input.scrolled();
            list.positionViewAtBeginning();
        } else if (event.key === Qt.Key_End) {
            follow();
        } else {
            input.pressKey(event);
        }
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: "History"
    Keys.onPressed: event => pressKey(event)
    onVisibleChanged: list.positionViewAtEnd()

    Connections {
        target: history.content
        function onIsRunningChanged() {
            history.follow();
        }
        function onStatusChanged() {
            history.follow();
        }
        function onAnnouncementChanged() {
            history.follow();
        }
    }

    // The list must lay out a change before scrolling; several changes are handled at once.
    Timer {
        id: later

        interval: 0
        onTriggered: history.scrollToEnd()
    }

    NumberAnimation {
        id: movement

        target: list
        property: "contentY"
        duration: 220
        easing.type: Easing.OutCubic
        onFinished: history.scrollToEnd()
    }

    ScrollInput {
        id: input

        anchors.fill: parent
        view: list
        onScrolled: {
            history.following = false;
            movement.stop();
        }
    }

    ListView {
        id: list

        anchors.fill: parent
        model: history.content.turns
        spacing: 28
        clip: true
        interactive: false
        onCountChanged: history.follow()
        onContentHeightChanged: later.restart()
        onHeightChanged: later.restart()

        header: Item {
            height: 20
        }

        delegate: TurnView {
            width: ListView.view.width
        }

        // qmllint disable unqualified
        footer: LiveStatus {
            width: ListView.view.width
            topPadding: 20
            bottomPadding: 24
            status: history.content.status
            preview: history.content.streamPreview
            running: history.content.isRunning
        }

        // qmllint enable unqualified
        ScrollBar.vertical: bar
    }

    ThinScrollBar {
        id: bar

        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        anchors.rightMargin: 6
        onPressedChanged: {
            history.following = false;
            movement.stop();
        }
    }

    FocusRing {
        anchors.margins: 4
        visible: history.activeFocus
    }
}
