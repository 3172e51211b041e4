// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <memory>

Q_FORWARD_DECLARE_OBJC_CLASS(NSRunningApplication);

// Remembers the application that was active before this program, whose window is a palette and never the
// user's subject. Receives changes through the main thread's event loop. Thread: main.
class MacFrontmost
{
public:
    MacFrontmost();
    ~MacFrontmost();
    MacFrontmost(const MacFrontmost &) = delete;
    MacFrontmost &operator=(const MacFrontmost &) = delete;

    // Whether this program is frontmost.
    bool isOurs() const;

    // The frontmost application; if that is this program, the one before it, or nil if that has quit or is
    // unknown.
    NSRunningApplication *application() const;

private:
    struct Memory;
    std::shared_ptr<Memory> m_memory;
};
