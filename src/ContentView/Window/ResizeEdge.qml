// SPDX-License-Identifier: Apache-2.0
// A resize handle at one side or corner of a window.
import QtQuick

WindowGrip {
    required property int edge // one or two Qt::Edge flags
    required property Window window

    readonly property bool atLeft: edge & Qt.LeftEdge
    readonly property bool atRight: edge & Qt.RightEdge
    readonly property bool atTop: edge & Qt.TopEdge
    readonly property bool atBottom: edge & Qt.BottomEdge
    readonly property bool isCorner: (atLeft || atRight) && (atTop || atBottom)
    readonly property int extent: isCorner ? 12 : 6

    function cursor(): int {
        if (isCorner)
            return atLeft === atTop ? Qt.SizeFDiagCursor : Qt.SizeBDiagCursor;
        return atLeft || atRight ? Qt.SizeHorCursor : Qt.SizeVerCursor;
    }

    x: atRight ? parent.width - width : 0
    y: atBottom ? parent.height - height : 0
    width: atLeft || atRight ? extent : parent.width
    height: atTop || atBottom ? extent : parent.height
    slack: 2
    cursorShape: cursor()
    onPulled: window.startSystemResize(edge)
}
