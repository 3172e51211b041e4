// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Mac/MacQueue.h"

#include <functional>
#include <memory>

// The macOS accessibility service. Queries applications on its own thread: each may block, and this program
// itself responds on the main thread. Thread: main.
class MacAccessibility : public Accessibility
{
public:
    using Activate = std::function<QCoro::Task<void>(qint64 processIdentifier)>;

    // `activate` focuses the application with this process, if necessary, before a control is pressed; throws
    // PlatformError if it has ended.
    explicit MacAccessibility(Activate activate);

    QCoro::Task<bool> isProcessTrusted() override;

    // The system shows a prompt; doesn't wait for the answer.
    QCoro::Task<void> requestTrust() override;

    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(RunningApplication application) override;

private:
    Activate m_activate;
    std::shared_ptr<MacQueue> m_queue;
};
