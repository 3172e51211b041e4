// SPDX-License-Identifier: Apache-2.0
// One side or corner of a window by which it is resized.
import QtQuick

MouseArea {
    required property int edge // one or two of Qt's edges
    required property Window window

    readonly property bool left: edge & Qt.LeftEdge
    readonly property bool right: edge & Qt.RightEdge
    readonly property bool top: edge & Qt.TopEdge
    readonly property bool bottom: edge & Qt.BottomEdge
    readonly property bool isCorner: (left || right) && (top || bottom)
    readonly property int extent: isCorner ? 12 : 6

    function cursor(): int {
        if (isCorner)
            return left === top ? Qt.SizeFDiagCursor : Qt.SizeBDiagCursor;
        return left || right ? Qt.SizeHorCursor : Qt.SizeVerCursor;
    }

    x: right ? parent.width - width : 0
    y: bottom ? parent.height - height : 0
    width: left || right ? extent : parent.width
    height: top || bottom ? extent : parent.height
    acceptedButtons: Qt.LeftButton
    cursorShape: cursor()
    onPressed: window.startSystemResize(edge)
}
