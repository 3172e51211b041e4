// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

// One window on the screen. Names are cleaned text.
struct WindowDescription
{
    std::optional<int> layer; // 0: an ordinary application window
    qint64 ownerProcessIdentifier = 0;
    std::optional<QString> ownerName;
    std::optional<QString> name;
};

// The windows on the screen, without desktop elements. Main thread; answers within a bounded time, and with
// an empty list when the window system does not answer.
class WindowList
{
public:
    virtual ~WindowList() = default;

    // Front to back.
    virtual QCoro::Task<QList<WindowDescription>> onScreenWindows() = 0;

    // The process that owns our own windows.
    virtual qint64 ownProcessIdentifier() const = 0;
};
