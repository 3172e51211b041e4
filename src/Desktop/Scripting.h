// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

class ScriptHost;

// The outcome of a script. Texts are cleaned.
struct ScriptOutcome
{
    enum class Ending {
        NotCreated, // the platform rejected the source; nothing ran
        Failed,     // compilation or execution failed
        Succeeded,
    };

    Ending ending = Ending::Succeeded;
    // On success, the result if it is a text; on failure, the platform's message if there is one.
    std::optional<QString> text;
};

// Runs scripts written by the model. A script may take seconds; it is bounded where we interpret it. Thread:
// main.
class Scripting
{
public:
    virtual ~Scripting() = default;

    // `host` carries out what the script says to applications, on platforms without an interpreter of their
    // own; it must outlive the task.
    virtual QCoro::Task<ScriptOutcome> run(QString source, ScriptHost &host) = 0;

    // Ends the running scripts, as failed; a command under way is completed first. Where the platform
    // interprets scripts, they go on.
    virtual void interrupt() = 0;
};
