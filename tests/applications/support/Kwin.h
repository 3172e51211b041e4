// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

#include <optional>

struct KwinWindow
{
    QString title;
    QString applicationIdentifier; // the app_id
    qint64 process = 0;
    bool isFocused = false;
};

// What a user sees on a private desktop with KWin, from a script that runs in KWin. Thread: main.
namespace Kwin {

// Front to back.
QList<KwinWindow> windows();

std::optional<KwinWindow> focused();

// All titles and app_ids in one line, for test messages.
QString described();

// Runs a script in KWin. What it passes to the function `tell`, a string, is returned; empty on timeout.
QString run(const QString &script);

// Ends every application with a window, except this program, and waits for all windows to go. False on
// timeout.
bool clear();

// Gives this program a desktop entry, and waits until KWin grants it what the entry names. False on timeout.
bool permitThisProgram();

} // namespace Kwin
