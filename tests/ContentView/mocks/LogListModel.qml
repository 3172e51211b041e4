// SPDX-License-Identifier: Apache-2.0
// A turn's log, built by the test.
import QtQml.Models

ListModel {
    id: model

    // All kinds of lines; `running` is used with `step` and `confirm`.
    function line(kind: string, text: string, running: bool): var {
        const kinds = {
            "step": ["checkmark", LogEntryAppearance.Secondary, LogEntryAppearance.Secondary, "carried out"],
            "success": ["checkmark.circle.fill", LogEntryAppearance.Good, LogEntryAppearance.Primary, "done"],
            "failure": ["xmark.circle.fill", LogEntryAppearance.Bad, LogEntryAppearance.Bad, "failed"],
            "info": ["info.circle", LogEntryAppearance.Secondary, LogEntryAppearance.Secondary, "note"],
            "confirm": ["hand.raised.fill", LogEntryAppearance.Warning, LogEntryAppearance.Secondary, "waits for your approval"]
        };
        const look = kinds[kind];
        return {
            "text": text,
            "symbol": look[0],
            "symbolRole": look[1],
            "textRole": running ? LogEntryAppearance.Primary : look[2],
            "running": running,
            "spoken": running ? "running" : look[3]
        };
    }

    function add(kind: string, text: string, running: bool) {
        append(line(kind, text, running));
    }

    function change(row: int, kind: string, text: string, running: bool) {
        set(row, line(kind, text, running));
    }
}
