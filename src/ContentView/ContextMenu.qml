// SPDX-License-Identifier: Apache-2.0
// What the window can do besides its tasks.
import QtQuick
import Orvane.ContentView

PaletteMenu {
    id: menu

    required property ContentViewModel content

    signal hideRequested
    signal quitRequested

    title: "Orvane"

    PaletteMenuItem {
        text: "Clear History"
        keys: "Ctrl+K"
        enabled: !menu.content.isRunning
        onTriggered: menu.content.clearHistory()
    }

    PaletteMenuItem {
        text: "Hide"
        keys: "Ctrl+W"
        onTriggered: menu.hideRequested()
    }

    PaletteMenuItem {
        text: "Quit"
        keys: "Ctrl+Q"
        onTriggered: menu.quitRequested()
    }
}
