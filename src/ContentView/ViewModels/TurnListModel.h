// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "ContentView/ViewModels/LogListModel.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

// The session's turns as a list model, oldest first, each with a list model of its log. Follows the session's
// signals. Thread: main. The session is not owned and must outlive this object.
class TurnListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the content view model")

public:
    // The summary is empty if it equals the last log line.
    enum Role { CommandRole = Qt::UserRole, LogRole, SummaryRole };

    explicit TurnListModel(const AgentSession &session, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void append(int turnIndex);
    void finish(int turnIndex);
    void clear();
    static QString shownSummary(const Turn &turn);

    const AgentSession &m_session;
    QStringList m_commands;
    QStringList m_summaries;
    QList<LogListModel *> m_logs; // owned as children
};
