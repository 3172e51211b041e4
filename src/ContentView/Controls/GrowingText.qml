// SPDX-License-Identifier: Apache-2.0
// Text that arrives in pieces. New text is appended so that the user's selection is kept.
import QtQuick

SelectableText {
    id: growing

    required property string source
    property string shown: "" // the part of the source already in the document

    function append(more: string) {
        const anchor = cursorPosition === selectionStart ? selectionEnd : selectionStart;
        const position = cursorPosition;
        insert(length, more);
        // A selection that reaches the end would grow with the text.
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
