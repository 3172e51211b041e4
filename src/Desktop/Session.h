// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

// The user's session: whether anything may be done in it at all. Main thread.
class Session
{
public:
    virtual ~Session() = default;

    // Why the windows, the keys and the screen of this session are out of reach as long as it lasts, in one
    // sentence for the user; nothing where they are not. The same at every call.
    virtual std::optional<QString> obstacle() const = 0;

    // Whether the screen is locked at this moment, so that nothing behind it may be seen or touched. Bounded;
    // throws nothing: a service that does not answer has locked nothing.
    virtual QCoro::Task<bool> isLocked() = 0;
};
