// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

// How a script ended. `error` is set when it failed to compile or to run: its message, or nothing inside when
// the platform gave none. `text` is the result's text value where it has one. Both are cleaned text.
struct ScriptOutcome
{
    bool created = true; // false: no script could be made of the source, and nothing ran
    std::optional<std::optional<QString>> error;
    std::optional<QString> text;
};

// Runs scripts written by the model. Main thread; a script may take seconds.
class Scripting
{
public:
    virtual ~Scripting() = default;
    virtual QCoro::Task<ScriptOutcome> run(QString source) = 0;
};
