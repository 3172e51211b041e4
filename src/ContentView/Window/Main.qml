// SPDX-License-Identifier: Apache-2.0
// The program's one window: without a frame, moved by its background and resized at its edges. What closing it means,
// where it is shown and how it looks is the program's business.
import QtQuick
import Orvane.ContentView

Window {
    id: window

    required property ContentViewModel content
    property bool dark: false
    property bool translucent: false
    property bool resizable: true
    // Tells the desktop what lies in the window's corners; see WindowStyler.
    readonly property int cornerRadius: Theme.windowRadius
    // Of the title bar that the desktop lays over the window's top; the frame is the desktop's then.
    property int titleBarHeight: 0
    readonly property bool hasFrame: titleBarHeight > 0

    title: "Orvane"
    width: 720
    height: 620
    minimumWidth: 640
    minimumHeight: 460
    flags: Qt.Window | Qt.FramelessWindowHint
    color: translucent ? "transparent" : Theme.window

    Binding {
        target: Theme
        property: "dark"
        value: window.dark
    }

    Binding {
        target: Theme
        property: "translucent"
        value: window.translucent
    }

    Shortcut {
        // Not the standard key: some desktops know none.
        sequence: "Ctrl+Q"
        onActivated: Qt.quit()
    }

    Shortcut {
        sequence: "Ctrl+K"
        onActivated: window.content.clearHistory()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: window.close()
    }

    Shortcut {
        sequences: ["Menu", "Shift+F10"]
        onActivated: view.openMenu()
    }

    // Only where nothing shines through can the corners be round; a window without transparency keeps them square.
    Rectangle {
        anchors.fill: parent
        radius: window.translucent && !window.hasFrame && window.visibility === Window.Windowed ? Theme.windowRadius : 0
        color: window.translucent && window.hasFrame ? "transparent" : Theme.background
        border.width: window.hasFrame ? 0 : 1
        border.color: Theme.edge

        WindowGrip {
            anchors.fill: parent
            onPulled: window.startSystemMove()
        }

        ContentView {
            id: view

            anchors.fill: parent
            anchors.topMargin: window.titleBarHeight
            content: window.content
            onHideRequested: window.close()
            onQuitRequested: Qt.quit()
        }
    }

    ResizeEdges {
        window: window
        visible: window.resizable && !window.hasFrame && window.visibility === Window.Windowed
    }
}
