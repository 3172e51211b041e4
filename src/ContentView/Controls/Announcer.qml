// SPDX-License-Identifier: Apache-2.0
// Speaks to screen readers: they announce an alert when it becomes visible, so this invisible item is shown anew for
// each text.
import QtQuick

Item {
    id: announcer

    function say(message: string) {
        visible = false;
        Accessible.name = message;
        visible = message !== "";
    }

    width: 1
    height: 1
    visible: false
    Accessible.role: Accessible.AlertMessage
}
