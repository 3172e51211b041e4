// SPDX-License-Identifier: Apache-2.0
// Marks a control that the pointer is over, or that is held down.
import QtQuick

Rectangle {
    required property bool down
    required property bool hovered

    color: down ? Theme.pressed : Theme.hover
    visible: down || hovered
}
