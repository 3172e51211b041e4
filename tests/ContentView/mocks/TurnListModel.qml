// SPDX-License-Identifier: Apache-2.0
// Turns, made from what a test says about them.
import QtQml
import QtQml.Models

ListModel {
    id: model

    readonly property Component logs: Component {
        LogListModel {
        }
    }

    // Adds a turn and answers its log.
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
