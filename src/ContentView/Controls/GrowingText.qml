// SPDX-License-Identifier: Apache-2.0
// Text that comes piece by piece. What is new is put behind what is there, so that what the user has selected stays so.
import QtQuick

SelectableText {
    id: growing

    required property string source
    property string shown: "" // what of the source is in the document

    function append(more: string) {
        const anchor = cursorPosition === selectionStart ? selectionEnd : selectionStart;
        const position = cursorPosition;
        insert(length, more);
        // A selection that reaches the end would grow with it.
        if (anchor !== position)
            select(anchor, position);
    }

    onSourceChanged: {
        if (source.startsWith(shown))
            append(source.slice(shown.length));
        else
            text = source;
        shown = source;
    }
}
