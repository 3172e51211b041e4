// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

#include <optional>

struct SwayWindow
{
    int identifier = 0;
    QString title;
    QString applicationIdentifier; // the app_id
    bool isFocused = false;
};

// What a user sees on a private desktop with sway, from sway itself. Thread: main.
namespace Sway {

QList<SwayWindow> windows();

// The windows whose app_id contains the text, case-insensitive.
QList<SwayWindow> windowsOf(const QString &applicationIdentifier);

std::optional<SwayWindow> focused();

// All titles and app_ids in one line, for test messages.
QString described();

// Ends every application with a window, except this program, and waits for all windows to go. False on timeout.
bool clear();

} // namespace Sway
