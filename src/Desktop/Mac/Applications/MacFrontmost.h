// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <memory>

Q_FORWARD_DECLARE_OBJC_CLASS(NSRunningApplication);

// Remembers which application the user worked with before our own, which is a palette and never the subject.
// Main thread; hears of changes while the main thread's event loop runs.
class MacFrontmost
{
public:
    MacFrontmost();
    ~MacFrontmost();
    MacFrontmost(const MacFrontmost &) = delete;
    MacFrontmost &operator=(const MacFrontmost &) = delete;

    // Whether our own application is the frontmost one.
    bool isOurs() const;

    // The frontmost application, if any; while that is our own, the one before it, or none when there was
    // none since this object was made or it has quit.
    NSRunningApplication *application() const;

private:
    struct Memory;
    std::shared_ptr<Memory> m_memory;
};
