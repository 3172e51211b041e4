// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

// The user's login session, and whether actions can work in it. Thread: main.
class Session
{
public:
    virtual ~Session() = default;

    // Why the windows, keys and screen of this session are inaccessible, as a sentence for the user, or
    // nothing if they are accessible. They may become inaccessible, but not accessible again.
    virtual std::optional<QString> obstacle() const = 0;

    // Whether the screen is locked. A service that fails or times out counts as not locked. Never throws.
    virtual QCoro::Task<bool> isLocked() = 0;
};
