// SPDX-License-Identifier: Apache-2.0
// A menu in the window's style. On closing, it restores the keyboard focus.
import QtQuick
import QtQuick.Controls.Basic

Menu {
    id: menu

    property Item focusedBefore: null

    function widestItem(): real {
        let widest = 0;
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i).implicitWidth);
        return widest;
    }

    onAboutToShow: focusedBefore = parent.Window.activeFocusItem
    onClosed: {
        if (focusedBefore && parent.Window.activeFocusItem === parent.Window.contentItem)
            focusedBefore.forceActiveFocus(Qt.PopupFocusReason);
    }

    // Menu is not an Item and has no Accessible properties; its popup item has.
    Component.onCompleted: contentItem.parent.Accessible.name = title

    padding: 5
    width: widestItem() + leftPadding + rightPadding
    margins: 8
    overlap: 0

    delegate: PaletteMenuItem {
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
    }
    background: PopupSurface {
    }
}
