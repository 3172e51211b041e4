// SPDX-License-Identifier: Apache-2.0
// A menu that looks like the window.
import QtQuick
import QtQuick.Controls.Basic

Menu {
    id: menu

    padding: 5
    margins: 8
    overlap: 0

    delegate: PaletteMenuItem {
    }
    background: PopupSurface {
    }
}
