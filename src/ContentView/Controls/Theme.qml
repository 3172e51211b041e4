// SPDX-License-Identifier: Apache-2.0
// Semantic colours in light and dark, and sizes shared by several views. The window sets `dark` and `translucent`.
pragma Singleton
import QtQuick
import Orvane.ContentView

QtObject {
    property bool dark: false
    property bool translucent: false

    readonly property color window: dark ? "#1c1c21" : "#f6f6f8"
    readonly property color translucentWindow: dark ? "#ea1c1c21" : "#eaf6f6f8"
    readonly property color background: translucent ? translucentWindow : window
    readonly property color card: dark ? "#2a2a31" : "#ffffff"
    readonly property color edge: dark ? "#24ffffff" : "#1f000000"
    readonly property color separator: dark ? "#7c7c88" : "#a2a2ac"

    readonly property color primary: dark ? "#f3f3f6" : "#1b1b20"
    readonly property color secondary: dark ? "#a3a3b0" : "#5f5f6b"
    readonly property color placeholder: dark ? "#9393a1" : "#6d6d79"
    readonly property color accent: dark ? "#8ea6ff" : "#3558d4"
    readonly property color good: dark ? "#4cc575" : "#1a7f42"
    readonly property color bad: dark ? "#ff7a78" : "#c8323c"
    readonly property color warning: dark ? "#ffab4d" : "#d66f00"
    readonly property color warningText: dark ? "#ffab4d" : "#a85400"

    readonly property color selection: dark ? "#5a4468e0" : "#403558d4"
    readonly property color control: dark ? "#3a3a43" : "#ffffff"
    readonly property color hover: dark ? "#12ffffff" : "#0c000000"
    readonly property color pressed: dark ? "#1fffffff" : "#17000000"
    readonly property color prominent: dark ? "#4468e0" : "#3558d4"
    readonly property color prominentText: "#ffffff"
    readonly property color track: dark ? "#26ffffff" : "#1a000000"

    // Horizontal margin of all content in the window.
    readonly property int margin: 24
    readonly property int controlRadius: 8
    readonly property int windowRadius: 14

    function roleColor(role: int): color {
        switch (role) {
        case LogEntryAppearance.Primary:
            return primary;
        case LogEntryAppearance.Good:
            return good;
        case LogEntryAppearance.Bad:
            return bad;
        case LogEntryAppearance.Warning:
            return warning;
        default:
            return secondary;
        }
    }
}
