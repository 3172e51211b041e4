// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUuid>

// One line of a turn's log. A plain record, written by the session and read by the interface. Thread: main.
struct LogEntry
{
    enum class Kind {
        Step,    // an action
        Success, // the task is done; the text is the closing message
        Failure, // a failed step, or why the run ended
        Info,    // a neutral note
        Confirm, // a step waiting for the user's approval
    };

    // Unique; identifies the line even if its text repeats.
    QUuid id = QUuid::createUuid();
    QString text = {}; // an action's title, or a message of the loop
    Kind kind = Kind::Step;
    // True while the step is being executed.
    bool running = false;

    friend bool operator==(const LogEntry &, const LogEntry &) = default;
};
