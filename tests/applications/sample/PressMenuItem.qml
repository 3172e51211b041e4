// SPDX-License-Identifier: Apache-2.0
// A menu item with an accessible press action, which Qt 6.4 leaves to the application.
import QtQuick
import QtQuick.Controls.Basic

MenuItem {
    Accessible.onPressAction: triggered()
}
