// SPDX-License-Identifier: Apache-2.0
#include "Agent/SessionBench.h"

#include "Agent/SystemPrompt.h"
#include "Support/ModelBytes.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString described(LogEntry::Kind kind)
{
    switch (kind) {
    case LogEntry::Kind::Step:
        return u"step"_s;
    case LogEntry::Kind::Success:
        return u"success"_s;
    case LogEntry::Kind::Failure:
        return u"failure"_s;
    case LogEntry::Kind::Info:
        return u"info"_s;
    case LogEntry::Kind::Confirm:
        return u"confirm"_s;
    }
    Q_UNREACHABLE();
}

QString section(const QString &title, const QString &text)
{
    return u"== "_s + title + u'\n' + (text.isEmpty() ? u"(none)"_s : text) + u'\n';
}

// Each conversation must begin with the previous one: the loop only appends.
bool onlyAppended(const QList<QList<ChatMessage>> &conversations)
{
    for (qsizetype i = 1; i < conversations.size(); ++i) {
        const QList<ChatMessage> &earlier = conversations[i - 1];
        if (conversations[i].first(earlier.size()) != earlier)
            return false;
    }
    return true;
}

} // namespace

SessionBench::SessionBench(ModelFile file)
    : SessionBench(file, std::make_unique<TalkativeEngine>(), std::make_unique<ScriptedDownloadSession>())
{
}

SessionBench::SessionBench(ModelFile file, std::unique_ptr<TalkativeEngine> scriptedEngine,
                           std::unique_ptr<ScriptedDownloadSession> scriptedDownloads)
    : engine(scriptedEngine.get()), downloads(scriptedDownloads.get()), desktop(folder.filePath(u"home"_s)),
      models(std::move(scriptedEngine), std::move(scriptedDownloads), storage(file)),
      session(std::make_unique<AgentSession>(models, desktop.services()))
{
    const AgentSession *observed = session.get();
    const auto noteStatus = [this, observed] {
        statuses.append(observed->status().isEmpty() ? u"(idle)"_s : observed->status());
    };
    QObject::connect(observed, &AgentSession::statusChanged, observed, noteStatus);
    const auto noteQuestion = [this, observed] {
        if (observed->pending())
            questions.append(observed->pending()->reason);
    };
    QObject::connect(observed, &AgentSession::pendingChanged, observed, noteQuestion);
}

ModelStorage SessionBench::storage(ModelFile file) const
{
    const ModelStorage storage{folder.filePath(u"data"_s), folder.filePath(u"settings.ini"_s)};
    const QString path = storage.modelsDirectory() + u'/' + LocalModel::catalog().constFirst().fileName;
    if (file == ModelFile::Present) {
        [[maybe_unused]] const bool written = ModelBytes::write(path);
        Q_ASSERT(written);
    }
    return storage;
}

void SessionBench::runTask(const QString &task)
{
    session->submit(task);
    QVERIFY(waitForEnd());
}

bool SessionBench::waitForEnd()
{
    return QTest::qWaitFor([this] { return !session->isRunning(); });
}

bool SessionBench::waitForPending()
{
    return QTest::qWaitFor([this] { return session->pending().has_value(); });
}

QString SessionBench::transcript() const
{
    const QString summary = lastTurn().summary.value_or(QString());
    return section(u"conversation"_s, conversation()) + section(u"asked"_s, questions.join(u'\n')) +
           section(u"status"_s, statuses.join(u'\n')) + section(u"log"_s, described(lastTurn().log)) +
           section(u"summary"_s, summary) + section(u"desktop"_s, desktop.journal.lines.join(u'\n'));
}

QString SessionBench::described(const QList<LogEntry> &log)
{
    QStringList lines;
    for (const LogEntry &entry : log)
        lines.append(::described(entry.kind) + u": "_s + entry.text +
                     (entry.running ? u" (running)"_s : QString()));
    return lines.join(u'\n');
}

// As sent for the last reply.
QString SessionBench::conversation() const
{
    if (engine->conversations.isEmpty())
        return {};
    if (!onlyAppended(engine->conversations))
        return u"(an earlier message was changed)"_s;
    QStringList lines;
    for (const ChatMessage &message : engine->conversations.constLast()) {
        const bool isPrompt = message.content == SystemPrompt::text();
        lines.append(ChatMessage::rawValue(message.role) + u": "_s +
                     (isPrompt ? u"(the system prompt)"_s : message.content));
    }
    return lines.join(u'\n');
}

QString openApp(const QString &name)
{
    return uR"({"action":"open_app","app":"%1"})"_s.arg(name);
}

QString typeText(const QString &text)
{
    return uR"({"action":"type_text","text":"%1"})"_s.arg(text);
}

QString quitApp(const QString &name)
{
    return uR"({"action":"quit_app","app":"%1"})"_s.arg(name);
}

QString done(const QString &message)
{
    return uR"({"action":"done","message":"%1"})"_s.arg(message);
}
