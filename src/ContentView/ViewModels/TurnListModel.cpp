// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/TurnListModel.h"

#include "Base/Text.h"
#include "ContentView/ViewModels/ShownText.h"

TurnListModel::TurnListModel(const AgentSession &session, QObject *parent)
    : QAbstractListModel(parent), m_session(session)
{
    for (int turn = 0; turn < session.turns().size(); ++turn)
        append(turn);
    connect(&session, &AgentSession::turnAppended, this, &TurnListModel::append);
    connect(&session, &AgentSession::historyCleared, this, &TurnListModel::clear);
    connect(&session, &AgentSession::logEntryAppended, this,
            [this](int turn, int entry) { m_logs[turn]->append(m_session.turns()[turn].log[entry]); });
    connect(&session, &AgentSession::logEntryChanged, this,
            [this](int turn, int entry) { m_logs[turn]->change(entry, m_session.turns()[turn].log[entry]); });
    connect(&session, &AgentSession::turnFinished, this, &TurnListModel::finish);
}

int TurnListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_logs.size());
}

QVariant TurnListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == CommandRole)
        return m_commands[index.row()];
    if (role == LogRole)
        return QVariant::fromValue(m_logs[index.row()]);
    if (role == SummaryRole)
        return m_summaries[index.row()];
    return {};
}

QHash<int, QByteArray> TurnListModel::roleNames() const
{
    return {{CommandRole, "command"}, {LogRole, "log"}, {SummaryRole, "summary"}};
}

void TurnListModel::append(int turnIndex)
{
    const Turn &turn = m_session.turns()[turnIndex];
    beginInsertRows({}, turnIndex, turnIndex);
    m_commands.append(Text::withVisibleMarks(turn.command));
    m_logs.append(new LogListModel(turn.log, this));
    m_summaries.append(shownSummary(turn));
    endInsertRows();
}

void TurnListModel::finish(int turnIndex)
{
    m_summaries[turnIndex] = shownSummary(m_session.turns()[turnIndex]);
    Q_EMIT dataChanged(index(turnIndex), index(turnIndex), {SummaryRole});
}

void TurnListModel::clear()
{
    beginResetModel();
    m_commands.clear();
    m_summaries.clear();
    // The view releases them after the reset.
    for (LogListModel *log : std::exchange(m_logs, {}))
        log->deleteLater();
    endResetModel();
}

QString TurnListModel::shownSummary(const Turn &turn)
{
    const QString summary = turn.summary.value_or(QString());
    const bool isLastLine = !turn.log.isEmpty() && turn.log.constLast().text == summary;
    return isLastLine ? QString() : ShownText::lines(summary);
}
