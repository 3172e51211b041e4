// SPDX-License-Identifier: Apache-2.0
// A button that assistive programs can press: Qt 6.4 leaves that to the application.
import QtQuick
import QtQuick.Controls.Basic

Button {
    Accessible.onPressAction: clicked()
}
