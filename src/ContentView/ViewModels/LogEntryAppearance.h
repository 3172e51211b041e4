// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/LogEntry.h"

#include <QObject>
#include <QtQmlIntegration>

// Appearance of a log line: its symbol and colour roles. Pure.
namespace LogEntryAppearance {
Q_NAMESPACE
QML_ELEMENT

// Semantic colours; the theme maps each to a light and a dark one.
enum Role {
    Primary,
    Secondary,
    Good,    // green
    Bad,     // red
    Warning, // orange
};
Q_ENUM_NS(Role)

// The displayed text: one line, except for the model's closing message.
QString shownText(const LogEntry &entry);
Role textRole(const LogEntry &entry);
QString symbol(LogEntry::Kind kind);
Role symbolRole(LogEntry::Kind kind);

// The symbol's meaning, for screen readers.
QString spoken(const LogEntry &entry);

} // namespace LogEntryAppearance
