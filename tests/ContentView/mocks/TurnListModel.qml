// SPDX-License-Identifier: Apache-2.0
// Turns, built by the test.
import QtQml
import QtQml.Models

ListModel {
    id: model

    readonly property Component logs: Component {
        LogListModel {
        }
    }

    // Appends a turn and returns its log.
    function add(command: string): LogListModel {
        const log = logs.createObject(model) as LogListModel;
        append({
                "command": command,
                "log": log,
                "summary": ""
            });
        return log;
    }
}
