// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/ProgramActivity.h"

#include <memory>

// Prevents App Nap while the program is working. The idle computer may still sleep. Thread: main.
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
    std::unique_ptr<Activity> m_activity; // null while idle
};
