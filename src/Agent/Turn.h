// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/LogEntry.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// One task that the user submitted, and what became of it. A plain record of the main thread: the session
// makes and changes it, the interface reads it.
struct Turn
{
    QUuid id = QUuid::createUuid();
    QString command = {};     // trimmed
    QList<LogEntry> log = {}; // oldest first
    bool finished = false;    // becomes true once, and stays so
    // The closing text; none for a run that ended neither by itself nor by a refusal.
    std::optional<QString> summary = {};

    friend bool operator==(const Turn &, const Turn &) = default;
};
