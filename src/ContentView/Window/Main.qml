// SPDX-License-Identifier: Apache-2.0
// The main window: frameless, moved by its background, resized at its edges. The program decides what closing does,
// where the window appears and how it looks.
import QtQuick
import Orvane.ContentView

Window {
    id: window

    required property ContentViewModel content
    property bool dark: false
    property bool translucent: false
    property bool resizable: true
    // Read by WindowStyler to shape the window's corners.
    readonly property int cornerRadius: Theme.windowRadius
    // Height of the desktop's title bar over the window's top; if positive, the frame is the desktop's.
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
        // StandardKey.Quit is undefined on some desktops.
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

    // Round corners need transparency; an opaque window keeps them square.
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
