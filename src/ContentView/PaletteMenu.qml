// SPDX-License-Identifier: Apache-2.0
// A menu that looks like the window.
import QtQuick
import QtQuick.Controls.Basic

Menu {
    id: menu

    function widestItem(): real {
        let widest = 0;
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i).implicitWidth);
        return widest;
    }

    padding: 5
    width: widestItem() + leftPadding + rightPadding
    margins: 8
    overlap: 0

    delegate: PaletteMenuItem {
    }
    background: PopupSurface {
    }
}
