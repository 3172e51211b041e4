// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUuid>

// One line of a turn's log. A plain record of the main thread: the session makes and changes it, the
// interface reads it.
struct LogEntry
{
    enum class Kind {
        Step,    // an action
        Success, // the task is done; the text is the closing message
        Failure, // a failed step, or why the run ended
        Info,    // a neutral note
        Confirm, // a step that waits for the user's approval
    };

    // Always fresh; the line is found again by it, and two lines with the same text are still two lines.
    QUuid id = QUuid::createUuid();
    QString text = {}; // an action's title, or a message of the loop
    Kind kind = Kind::Step;
    // True while the step that the line stands for is being carried out.
    bool running = false;

    friend bool operator==(const LogEntry &, const LogEntry &) = default;
};
