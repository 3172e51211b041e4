// SPDX-License-Identifier: Apache-2.0
// Resize handles for a frameless window.
import QtQuick

Item {
    id: edges

    required property Window window

    anchors.fill: parent

    ResizeEdge {
        edge: Qt.LeftEdge
        window: edges.window
    }

    ResizeEdge {
        edge: Qt.RightEdge
        window: edges.window
    }

    ResizeEdge {
        edge: Qt.TopEdge
        window: edges.window
    }

    ResizeEdge {
        edge: Qt.BottomEdge
        window: edges.window
    }

    // Corners come last, to lie above the ends of the sides.
    ResizeEdge {
        edge: Qt.LeftEdge | Qt.TopEdge
        window: edges.window
    }

    ResizeEdge {
        edge: Qt.RightEdge | Qt.TopEdge
        window: edges.window
    }

    ResizeEdge {
        edge: Qt.LeftEdge | Qt.BottomEdge
        window: edges.window
    }

    ResizeEdge {
        edge: Qt.RightEdge | Qt.BottomEdge
        window: edges.window
    }
}
