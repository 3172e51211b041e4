// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/LogEntry.h"

#include <QAbstractListModel>
#include <QtQmlIntegration>

// The log of one turn as a list model, oldest line first. Thread: main.
class LogListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made for each turn")

public:
    enum Role {
        TextRole = Qt::UserRole,
        SymbolRole,
        SymbolColourRole,
        TextColourRole,
        RunningRole,
        SpokenRole
    };

    explicit LogListModel(const QList<LogEntry> &entries, QObject *parent = nullptr);

    void append(const LogEntry &entry);
    void change(int row, const LogEntry &entry);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QList<LogEntry> m_entries;
};
