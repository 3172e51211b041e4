// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "Desktop/Recording/RecordingDesktop.h"
#include "Models/ModelManager.h"
#include "Support/ScriptedDownloadSession.h"
#include "Support/ScriptedEngine.h"

#include <QTemporaryDir>

#include <memory>

// The scripted engine, which keeps the callbacks that it is given: so a test can have a piece of a reply come
// whenever it likes.
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

// A session with everything around it: a scripted engine behind the real model manager, and the recording
// desktop. What happens is written down as it is announced; `transcript` gives a whole run as text.
class SessionBench
{
public:
    enum class ModelFile { Present, Missing };

    explicit SessionBench(ModelFile file = ModelFile::Present);

    // Submits the task and waits until it has ended.
    void runTask(const QString &task);
    bool waitForEnd();
    bool waitForPending();

    // The last run: what the engine was sent, what the user was asked, saw as status and has in the log, and
    // what was done to the desktop.
    QString transcript() const;
    // "kind: text" a line, with " (running)" where the entry runs.
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

// Replies of the model.
QString openApp(const QString &name);
QString typeText(const QString &text);
QString quitApp(const QString &name);
QString done(const QString &message);
