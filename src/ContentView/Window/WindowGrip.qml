// SPDX-License-Identifier: Apache-2.0
// Where the window can be taken hold of. The window manager is to take over only once the pointer moves: after a mere
// click it would come too late and hold on to the window. (A drag handler is no help: it would take hold once more when
// the window manager lets go.)
import QtQuick

MouseArea {
    // How far the pointer moves before it counts.
    property int slack: 10
    property point start
    property bool isPulled: false

    // Once for each press.
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
