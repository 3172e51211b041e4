// SPDX-License-Identifier: Apache-2.0
// Outline of the control that has the keyboard focus.
import QtQuick

Rectangle {
    property int gap: 2

    anchors.fill: parent
    anchors.margins: -gap - border.width
    radius: Theme.controlRadius + gap
    color: "transparent"
    border.width: 2
    border.color: Theme.accent
}
