// SPDX-License-Identifier: Apache-2.0
// Plain text that screen readers read.
import QtQuick

Text {
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
