// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "Desktop/Recording/RecordingDesktop.h"
#include "Models/ModelManager.h"
#include "Support/ScriptedDownloadSession.h"
#include "Support/ScriptedEngine.h"

#include <QTemporaryDir>

#include <memory>

// A scripted engine that keeps its callbacks, so that a test can deliver pieces of a reply at any time.
class TalkativeEngine : public ScriptedEngine
{
public:
    QList<std::function<void(QString)>> callbacks;

    QCoro::Task<QString> generate(QList<ChatMessage> messages, int maxTokens,
                                  std::function<void(QString)> onToken) override
    {
        callbacks.append(onToken);
        return ScriptedEngine::generate(messages, maxTokens, onToken);
    }
};

// A session with a scripted engine behind the real model manager, and the recording desktop. Events are
// recorded as announced; `transcript` returns a whole run as text.
class SessionBench
{
public:
    enum class ModelFile { Present, Missing };

    explicit SessionBench(ModelFile file = ModelFile::Present);

    // Submits a task and waits for its end.
    void runTask(const QString &task);
    bool waitForEnd();
    bool waitForPending();

    // The last run: messages to the engine, questions, status, log, and operations on the desktop.
    QString transcript() const;
    // "kind: text" per line, with " (running)" for a running entry.
    static QString described(const QList<LogEntry> &log);

    const Turn &lastTurn() const { return session->turns().constLast(); }

    QTemporaryDir folder;
    TalkativeEngine *engine;
    ScriptedDownloadSession *downloads;
    RecordingDesktop desktop;
    ModelManager models;
    std::unique_ptr<AgentSession> session;
    QStringList statuses;
    QStringList questions;

private:
    SessionBench(ModelFile file, std::unique_ptr<TalkativeEngine> scriptedEngine,
                 std::unique_ptr<ScriptedDownloadSession> scriptedDownloads);
    ModelStorage storage(ModelFile file) const;
    QString conversation() const;
};

// Model replies.
QString openApp(const QString &name);
QString typeText(const QString &text);
QString quitApp(const QString &name);
QString done(const QString &message);
