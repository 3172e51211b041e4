// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "ContentView/LogListModel.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

// The session's turns as a list for the view, oldest first, each with its log as a list of its own. Follows
// the session, line by line. Main thread; the session is not owned and outlives this object.
class TurnListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the content view model")

public:
    enum Role { CommandRole = Qt::UserRole, LogRole };

    explicit TurnListModel(const AgentSession &session, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    void append(int turnIndex);
    void clear();

    const AgentSession &m_session;
    QStringList m_commands;
    QList<LogListModel *> m_logs; // owned as children
};
