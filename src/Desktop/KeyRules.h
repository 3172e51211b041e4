// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

#include <QString>

#include <chrono>
#include <optional>

// Rules for sending keys on every platform.
namespace KeyRules {

// Throws PlatformError if there is no receiver or another application is in front. Any thread.
void requireInFront(const std::optional<RunningApplication> &receiver,
                    const std::optional<RunningApplication> &frontmost);

// Bounds the wait for the user to release modifier keys, which would turn text into shortcuts. Create it when
// the wait begins; use it on one thread.
class ModifierPatience
{
public:
    // The polling interval.
    static constexpr std::chrono::milliseconds interval{5};

    // Throws PlatformError once half a second has passed. `consequence` completes the message: "no keys were
    // sent".
    void requireTimeLeft(const QString &consequence) const;

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

} // namespace KeyRules
