// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Workspace.h"

#include <QString>

#include <chrono>
#include <optional>

// The rules under which every platform's keyboard sends keys.
namespace KeyRules {

// Throws PlatformError when there is no receiver, or another application is in front. Callable from any
// thread.
void requireInFront(const std::optional<RunningApplication> &receiver,
                    const std::optional<RunningApplication> &frontmost);

// How long keys wait for the user to release the modifier keys, which would turn them into shortcuts. Made
// when the wait begins; used on one thread.
class ModifierPatience
{
public:
    // Between two looks at the modifier keys.
    static constexpr std::chrono::milliseconds interval{5};

    // Throws PlatformError half a second after the wait began. `consequence` ends the sentence: "no keys were
    // sent".
    void requireTimeLeft(const QString &consequence) const;

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

} // namespace KeyRules
