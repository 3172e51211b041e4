// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/LogEntry.h"

#include <QObject>
#include <QtQmlIntegration>

// How a line of the log looks: the symbol in front of it, and the colours by their role. Pure functions.
namespace LogEntryAppearance {
Q_NAMESPACE
QML_ELEMENT

// What a colour means; the theme gives each role its colour in light and dark.
enum Role {
    Primary,
    Secondary,
    Good,    // green
    Bad,     // red
    Warning, // orange
};
Q_ENUM_NS(Role)

// The entry's text as it comes onto the screen: one line, but for the lines of the model's closing message.
QString shownText(const LogEntry &entry);
Role textRole(const LogEntry &entry);
QString symbol(LogEntry::Kind kind);
Role symbolRole(LogEntry::Kind kind);

// What the symbol says, for those who cannot see it.
QString spoken(const LogEntry &entry);

} // namespace LogEntryAppearance
