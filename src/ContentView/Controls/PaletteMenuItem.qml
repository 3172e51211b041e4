// SPDX-License-Identifier: Apache-2.0
// A menu row with an optional tick and shortcut text. Takes no space unless offered.
import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts

MenuItem {
    id: item

    property bool choice: false // one of a set of alternatives
    property bool current: false
    property string keys: ""
    property bool offered: true
    readonly property string shownKeys: keys === "" ? "" : shortcut.nativeText

    implicitWidth: Math.max(implicitContentWidth + leftPadding + rightPadding, 160)
    implicitHeight: offered ? 30 : 0
    visible: offered
    leftPadding: choice ? 8 : 12
    rightPadding: 12
    topPadding: 0
    bottomPadding: 0
    font.pixelSize: 13
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: shownKeys
    Accessible.checkable: choice
    Accessible.checked: current
    Accessible.onPressAction: clicked()

    contentItem: RowLayout {
        spacing: 8

        SymbolIcon {
            name: "checkmark"
            tint: Theme.primary
            size: 12
            opacity: item.current ? 1 : 0
            visible: item.choice
        }

        Text {
            Layout.fillWidth: true
            text: item.text
            textFormat: Text.PlainText
            font.pixelSize: item.font.pixelSize
            color: Theme.primary
            opacity: item.enabled ? 1 : 0.4
        }

        Text {
            Layout.leftMargin: 24
            text: item.shownKeys
            textFormat: Text.PlainText
            font.pixelSize: 12
            color: Theme.secondary
            opacity: item.enabled ? 1 : 0.4
            visible: text !== ""
        }
    }

    // Only formats the shortcut for this desktop; the window handles the key.
    Shortcut {
        id: shortcut

        sequence: item.keys
        enabled: false
    }

    indicator: null
    arrow: null

    background: HoverSurface {
        radius: 6
        down: item.enabled && item.down
        hovered: item.enabled && (item.hovered || item.highlighted)
    }
}
