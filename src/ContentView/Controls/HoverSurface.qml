// SPDX-License-Identifier: Apache-2.0
// Background of a hovered or pressed control.
import QtQuick

Rectangle {
    required property bool down
    required property bool hovered

    color: down ? Theme.pressed : Theme.hover
    visible: down || hovered
}
