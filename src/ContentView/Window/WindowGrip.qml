// SPDX-License-Identifier: Apache-2.0
// A drag area. The window manager takes over only once the pointer moves: after a mere click, its grab would come after
// the release and never end. (DragHandler does not work: it grabs again when the window manager lets go.)
import QtQuick

MouseArea {
    // Distance in pixels before a move counts as a drag.
    property int slack: 10
    property point start
    property bool isPulled: false

    // Emitted once per press.
    signal pulled

    acceptedButtons: Qt.LeftButton
    onPressed: event => {
        start = Qt.point(event.x, event.y);
        isPulled = false;
    }
    onPositionChanged: event => {
        const distance = Math.abs(event.x - start.x) + Math.abs(event.y - start.y);
        if (isPulled || distance < slack)
            return;
        isPulled = true;
        pulled();
    }
}
