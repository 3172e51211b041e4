// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionError.h"
#include "Actions/AgentAction.h"
#include "Actions/Executor.h"
#include "Desktop/Recording/RecordingDesktop.h"

#include <QCoroTask>
#include <QFile>
#include <QTemporaryDir>

#include <utility>

// A desktop in memory over a home folder of its own, and the calls that the tests of the actions make.
class ActionBench
{
public:
    // The result line of an operation, or "Error: " and the description of what it threw.
    template <typename Result>
    static QString outcome(QCoro::Task<Result> task)
    {
        return QCoro::waitFor(described(std::move(task)));
    }

    // The outcome of the action that the model wrote.
    QString run(const QString &reply)
    {
        const std::optional<AgentAction> action = AgentAction::parse(reply);
        return action ? outcome(Executor::run(*action, services())) : QStringLiteral("No action.");
    }

    Desktop services() { return desktop.services(); }
    QStringList journal() const { return desktop.journal.lines; }
    QString path(const QString &inHome) const { return home.path() + u'/' + inHome; }

    // A file in the home folder, with the folders above it.
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
