// SPDX-License-Identifier: Apache-2.0
// A thin line between two areas.
import QtQuick

Rectangle {
    implicitHeight: 1
    color: Theme.separator
    opacity: 0.4
}
