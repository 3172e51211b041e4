// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/ScriptHost.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QStringList>

// A host that knows the date and prepared answers; it keeps a journal of all other commands.
class SampleHost : public ScriptHost
{
public:
    QStringList journal;                 // "play, of Music, with every track"
    QHash<QString, ScriptValue> answers; // by the journal's line

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override
    {
        if (command.name == QStringLiteral("current date"))
            co_return ScriptValue::date(QDateTime(QDate(2026, 11, 23), QTime(14, 30)));
        const QString line = described(command);
        journal.append(line);
        const auto answer = answers.constFind(line);
        co_return answer == answers.cend() ? std::nullopt : std::optional(*answer);
    }

private:
    static QString described(const ScriptCommand &command)
    {
        QString line = command.name;
        if (command.direct)
            line += u' ' + ScriptCoercion::source(*command.direct);
        QStringList labels = command.parameters.keys();
        labels.sort();
        for (const QString &label : labels)
            line += QStringLiteral(", ") + label + u' ' + ScriptCoercion::source(command.parameter(label));
        return command.application ? *command.application + QStringLiteral(": ") + line : line;
    }
};
