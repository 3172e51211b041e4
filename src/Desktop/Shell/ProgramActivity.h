// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Prevents the desktop from throttling the program while it works with its windows hidden. On platforms that
// don't throttle programs, this class itself is used and does nothing. Thread: main.
class ProgramActivity
{
public:
    virtual ~ProgramActivity() = default;

    // Starts an activity that lasts until `end`; calls alternate. `reason` is shown in the system's
    // diagnostic tools.
    virtual void begin(const QString & /* reason */) {}
    virtual void end() {}
};
