// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/ProgramActivity.h"

#include <memory>

// Keeps App Nap away while the program is at work. The computer may go to sleep all the same when the user is
// away. Main thread.
class MacProgramActivity : public ProgramActivity
{
public:
    MacProgramActivity();
    ~MacProgramActivity() override;
    MacProgramActivity(const MacProgramActivity &) = delete;
    MacProgramActivity &operator=(const MacProgramActivity &) = delete;

    void begin(const QString &reason) override;
    void end() override;

private:
    struct Activity;
    std::unique_ptr<Activity> m_activity; // while one is under way
};
