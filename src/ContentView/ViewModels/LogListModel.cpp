// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/LogListModel.h"

#include "ContentView/ViewModels/LogEntryAppearance.h"

LogListModel::LogListModel(const QList<LogEntry> &entries, QObject *parent)
    : QAbstractListModel(parent), m_entries(entries)
{
}

void LogListModel::append(const LogEntry &entry)
{
    const int row = static_cast<int>(m_entries.size());
    beginInsertRows({}, row, row);
    m_entries.append(entry);
    endInsertRows();
}

void LogListModel::change(int row, const LogEntry &entry)
{
    m_entries[row] = entry;
    Q_EMIT dataChanged(index(row), index(row));
}

int LogListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant LogListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const LogEntry &entry = m_entries[index.row()];
    switch (role) {
    case TextRole:
        return LogEntryAppearance::shownText(entry);
    case SymbolRole:
        return LogEntryAppearance::symbol(entry.kind);
    case SymbolColourRole:
        return LogEntryAppearance::symbolRole(entry.kind);
    case TextColourRole:
        return LogEntryAppearance::textRole(entry);
    case RunningRole:
        return entry.running;
    case SpokenRole:
        return LogEntryAppearance::spoken(entry);
    }
    return {};
}

QHash<int, QByteArray> LogListModel::roleNames() const
{
    return {{TextRole, "text"},           {SymbolRole, "symbol"},   {SymbolColourRole, "symbolRole"},
            {TextColourRole, "textRole"}, {RunningRole, "running"}, {SpokenRole, "spoken"}};
}
