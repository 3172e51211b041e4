// SPDX-License-Identifier: Apache-2.0
// The window's menu, with editing commands if opened on a text field.
import QtQuick
import QtQuick.Controls.Basic
import Orvane.ContentView

PaletteMenu {
    id: menu

    required property ContentViewModel content
    property TextField field: null // null if not opened on a field

    signal hideRequested
    signal quitRequested

    title: "Orvane"

    PaletteMenuItem {
        text: "Cut"
        keys: "Ctrl+X"
        offered: menu.field !== null
        enabled: offered && menu.field.selectedText !== ""
        onTriggered: menu.field.cut()
    }

    PaletteMenuItem {
        text: "Copy"
        keys: "Ctrl+C"
        offered: menu.field !== null
        enabled: offered && menu.field.selectedText !== ""
        onTriggered: menu.field.copy()
    }

    PaletteMenuItem {
        text: "Paste"
        keys: "Ctrl+V"
        offered: menu.field !== null
        enabled: offered && menu.field.canPaste
        onTriggered: menu.field.paste()
    }

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
