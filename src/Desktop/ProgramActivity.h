// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Tells the desktop that the program is at work for the user, where a desktop slows programs down whose
// windows nobody sees. Where desktops do no such thing, this very class serves. Main thread.
class ProgramActivity
{
public:
    virtual ~ProgramActivity() = default;

    // The program is at work until `end`; `reason` is for people who look at why it is. Called by turns with
    // `end`, beginning with this one.
    virtual void begin(const QString & /* reason */) {}
    virtual void end() {}
};
