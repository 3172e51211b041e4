// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

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

// Runs scripts written by the model. A script may take seconds. Thread: main.
class Scripting
{
public:
    virtual ~Scripting() = default;
    virtual QCoro::Task<ScriptOutcome> run(QString source) = 0;
};
