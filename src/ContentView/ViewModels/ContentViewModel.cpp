// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/ContentViewModel.h"

#include "Base/PlatformWords.h"
#include "Base/Text.h"
#include "ContentView/ViewModels/LogEntryAppearance.h"
#include "ContentView/ViewModels/ShownText.h"
#include "Desktop/PlatformError.h"

#include <QPointer>

using namespace Qt::StringLiterals;

ContentViewModel::ContentViewModel(ModelManager &models, AgentSession &session, const Desktop &desktop,
                                   QObject *parent)
    : QObject(parent), m_models(models), m_session(session), m_desktop(desktop), m_turns(session),
      m_setup(models), m_dialog(desktop.dialogs)
{
    connect(&models, &ModelManager::stateChanged, this, &ContentViewModel::layerChanged);
    connect(&models, &ModelManager::selectedChanged, this, &ContentViewModel::modelNameChanged);
    connect(&session, &AgentSession::turnsChanged, this, &ContentViewModel::layerChanged);
    connect(&session, &AgentSession::isRunningChanged, this, &ContentViewModel::isRunningChanged);
    connect(&session, &AgentSession::statusChanged, this, &ContentViewModel::statusChanged);
    connect(&session, &AgentSession::streamPreviewChanged, this, &ContentViewModel::streamPreviewChanged);
    connect(&session, &AgentSession::pendingChanged, this, &ContentViewModel::confirmationChanged);
    connect(&session, &AgentSession::pendingChanged, this, [this] { announce(confirmationReason()); });
    connect(&m_dialog, &DialogViewModel::changed, this, [this] { announce(m_dialog.text()); });
    connect(&session, &AgentSession::logEntryAppended, this, &ContentViewModel::announceEntry);
    connect(&session, &AgentSession::logEntryChanged, this, &ContentViewModel::announceFailure);
    // A task may have switched accessibility on.
    connect(&session, &AgentSession::logEntryAppended, this, [this] { m_trust = refreshTrust(); });
    connect(&session, &AgentSession::turnFinished, this, &ContentViewModel::announceSummary);
    m_trust = refreshTrust();
}

ContentViewModel::Layer ContentViewModel::layer() const
{
    if (m_models.state().kind != ModelManager::State::Kind::Loaded)
        return Setup;
    return m_session.turns().isEmpty() ? Empty : History;
}

void ContentViewModel::setInput(const QString &input)
{
    if (m_input == input)
        return;
    m_input = input;
    Q_EMIT inputChanged();
}

QString ContentViewModel::placeholder() const
{
    return PlatformWords::current().placeholder;
}

QString ContentViewModel::leadingSymbol() const
{
    return isRunning() ? u"sparkles"_s : u"command"_s;
}

QStringList ContentViewModel::suggestions() const
{
    return {u"Open Safari and search Google for MacBook Air"_s,
            u"Open Finder and create a folder called Projects"_s,
            u"Take a screenshot and save it to Downloads"_s,
            u"Open my Downloads folder and find the latest PDF"_s};
}

QString ContentViewModel::status() const
{
    return ShownText::line(m_session.status());
}

QString ContentViewModel::streamPreview() const
{
    return Text::withVisibleMarks(m_session.streamPreview(), Text::Layout::Lines);
}

QString ContentViewModel::confirmationReason() const
{
    return isConfirming() ? ShownText::inOrder(m_session.pending()->shownReason()) : QString();
}

bool ContentViewModel::canChooseModel() const
{
    return layer() != Setup;
}

QString ContentViewModel::modelName() const
{
    return m_models.selected().name;
}

QStringList ContentViewModel::modelNames() const
{
    QStringList result;
    for (const LocalModel &model : LocalModel::catalog())
        result.append(model.name);
    return result;
}

void ContentViewModel::appear()
{
    m_loading = m_models.loadIfNeeded();
}

void ContentViewModel::summoned()
{
    Q_EMIT focusRequested();
    m_trust = refreshTrust();
}

void ContentViewModel::becameActive()
{
    m_trust = refreshTrust();
}

void ContentViewModel::send()
{
    if (m_models.state().kind != ModelManager::State::Kind::Loaded)
        return;
    const QString text = m_input;
    setInput({});
    m_session.submit(text);
}

void ContentViewModel::stop()
{
    m_session.stop();
}

void ContentViewModel::resolve(bool approved)
{
    m_session.resolve(approved);
}

void ContentViewModel::useSuggestion(int suggestion)
{
    setInput(suggestions().at(suggestion));
    Q_EMIT focusRequested();
}

void ContentViewModel::selectModel(int choice)
{
    if (!isRunning())
        m_setup.select(choice);
}

void ContentViewModel::grantAccess()
{
    m_trust = askForTrust();
}

void ContentViewModel::clearHistory()
{
    m_session.clearHistory();
}

QCoro::Task<void> ContentViewModel::refreshTrust()
{
    if (!obstacle().isEmpty())
        co_return;
    const QPointer<ContentViewModel> self(this);
    bool trusted = false;
    try {
        trusted = co_await m_desktop.accessibility.isProcessTrusted();
    } catch (const PlatformError &) {
        // If the desktop cannot be queried, there is no access; the banner says so.
        trusted = false;
    }
    if (!self || m_trusted == trusted)
        co_return;
    m_trusted = trusted;
    Q_EMIT trustedChanged();
}

QCoro::Task<void> ContentViewModel::askForTrust()
{
    const QPointer<ContentViewModel> self(this);
    try {
        co_await m_desktop.accessibility.requestTrust();
    } catch (const PlatformError &) {
        // The banner stays.
    }
    if (self)
        co_await refreshTrust();
}

void ContentViewModel::announce(const QString &text)
{
    if (text.isEmpty())
        return;
    m_announcement = text;
    Q_EMIT announcementChanged();
}

void ContentViewModel::announceEntry(int turnIndex, int entryIndex)
{
    announce(LogEntryAppearance::shownText(m_session.turns()[turnIndex].log[entryIndex]));
}

// A successful step was already announced when it began.
void ContentViewModel::announceFailure(int turnIndex, int entryIndex)
{
    if (m_session.turns()[turnIndex].log[entryIndex].kind == LogEntry::Kind::Failure)
        announceEntry(turnIndex, entryIndex);
}

void ContentViewModel::announceSummary(int turnIndex)
{
    announce(m_turns.index(turnIndex).data(TurnListModel::SummaryRole).toString());
}
