// SPDX-License-Identifier: Apache-2.0
// Speaks to screen readers: a message that appears is read out, and this one appears anew for each text. Nothing of it
// is to be seen.
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
