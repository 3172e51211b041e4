// SPDX-License-Identifier: Apache-2.0
// A second window, whose button changes its title.
import QtQuick

Window {
    id: window

    width: 300
    height: 160
    title: "Second – Sample"

    PressButton {
        anchors.centerIn: parent
        text: "Ring the bell"
        onClicked: window.title = "The bell rang – Sample"
    }
}
