// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

// How a script ended. Texts are cleaned.
struct ScriptOutcome
{
    enum class Ending {
        NotCreated, // the platform made no script of the source, and nothing ran
        Failed,     // it did not compile, or failed while it ran
        Succeeded,
    };

    Ending ending = Ending::Succeeded;
    // After success the result where it is a text; after a failure the platform's message where there is one.
    std::optional<QString> text;
};

// Runs scripts written by the model. Main thread; a script may take seconds.
class Scripting
{
public:
    virtual ~Scripting() = default;
    virtual QCoro::Task<ScriptOutcome> run(QString source) = 0;
};
