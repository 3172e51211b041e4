// SPDX-License-Identifier: Apache-2.0
// A text that stands on the window: shown as it is written, and read out by screen readers.
import QtQuick

Text {
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
