// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/LogEntry.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// One submitted task and its outcome. A plain record, written by the session and read by the interface.
// Thread: main.
struct Turn
{
    QUuid id = QUuid::createUuid();
    QString command = {};     // trimmed
    QList<LogEntry> log = {}; // oldest first
    bool finished = false;    // never reset
    // The closing text; empty unless the run was completed or declined.
    std::optional<QString> summary = {};

    friend bool operator==(const Turn &, const Turn &) = default;
};
