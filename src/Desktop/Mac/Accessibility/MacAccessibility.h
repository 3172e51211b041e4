// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Mac/MacQueue.h"

#include <functional>
#include <memory>

// The accessibility service of macOS. Main thread; other applications are asked on a thread of this object's
// own, since each may keep it waiting, and our own answers on the main thread.
class MacAccessibility : public Accessibility
{
public:
    using Activate = std::function<QCoro::Task<void>(qint64 processIdentifier)>;

    // `activate` gives the focus to the application with this process if it does not have it, before its
    // control is pressed; throws PlatformError when it is gone.
    explicit MacAccessibility(Activate activate);

    QCoro::Task<bool> isProcessTrusted() override;

    // The system shows its own prompt, and does not wait for the answer.
    QCoro::Task<void> requestTrust() override;

    QCoro::Task<std::shared_ptr<AccessibilityTree>> applicationTree(qint64 processIdentifier) override;

private:
    Activate m_activate;
    std::shared_ptr<MacQueue> m_queue;
};
