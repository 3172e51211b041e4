// SPDX-License-Identifier: Apache-2.0
// One of the program's symbols, rendered at the screen's scale. Decorative: screen readers skip it.
import QtQuick

Image {
    id: icon

    required property string name
    required property color tint
    required property int size

    width: size
    height: size
    sourceSize.width: size
    sourceSize.height: size
    source: name === "" ? "" : "image://symbol/" + name + "?" + tint.toString().slice(1)
    Accessible.ignored: true
}
