// SPDX-License-Identifier: Apache-2.0
// A button with an accessible press action, which Qt 6.4 leaves to the application.
import QtQuick
import QtQuick.Controls.Basic

Button {
    Accessible.onPressAction: clicked()
}
