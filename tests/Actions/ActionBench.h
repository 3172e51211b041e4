// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionError.h"
#include "Actions/AgentAction.h"
#include "Actions/Executor.h"
#include "Desktop/Recording/RecordingDesktop.h"
#include "Support/Awaited.h"

#include <QCoroTask>
#include <QFile>
#include <QTemporaryDir>

#include <utility>

// A recording desktop with a temporary home folder, and helpers for the tests of actions.
class ActionBench
{
public:
    // The task's result line, or "Error: " and the exception's description.
    template <typename Result>
    static QString outcome(QCoro::Task<Result> task)
    {
        return Awaited::result(described(std::move(task)));
    }

    // Runs the action in the model's reply and returns its outcome.
    QString run(const QString &reply)
    {
        const std::optional<AgentAction> action = AgentAction::parse(reply);
        return action ? outcome(Executor::run(*action, services())) : QStringLiteral("No action.");
    }

    Desktop services() { return desktop.services(); }
    QStringList journal() const { return desktop.journal.lines; }
    QString path(const QString &inHome) const { return home.path() + u'/' + inHome; }

    // Creates an empty file in the home folder, and its parent folders.
    void addFile(const QString &inHome)
    {
        QDir(home.path()).mkpath(QFileInfo(inHome).path());
        QFile file(path(inHome));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("The test's home folder cannot be written to.");
    }

    QTemporaryDir home;
    RecordingDesktop desktop{home.path()};

private:
    template <typename Result>
    static QCoro::Task<QString> described(QCoro::Task<Result> task)
    {
        try {
            if constexpr (std::is_void_v<Result>) {
                co_await task;
                co_return QStringLiteral("done");
            } else {
                const QString line = co_await task;
                co_return line;
            }
        } catch (const LocalizedError &error) {
            co_return QStringLiteral("Error: ") + error.errorDescription();
        }
    }
};
