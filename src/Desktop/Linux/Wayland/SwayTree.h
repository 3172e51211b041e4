// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

// The windows as sway reports them over its own socket, $SWAYSOCK: with their processes, which the protocol
// for windows doesn't tell. Texts are cleaned. Thread: main.
namespace SwayTree {

struct Window
{
    qint64 process = 0;
    QString applicationIdentifier; // of an X11 application, its class
    QString title;
    bool isFocused = false;
};

// In no particular order; nothing if the compositor with this process isn't sway, or doesn't answer within
// Deadlines::answer. Never throws.
QCoro::Task<std::optional<QList<Window>>> windows(qint64 compositor);

// The windows of sway's reply, a JSON tree; nothing if it isn't one.
std::optional<QList<Window>> windowsIn(const QByteArray &reply);

} // namespace SwayTree
