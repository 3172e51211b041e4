// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Mac/CoreFoundationReference.h"
#include "Desktop/Mac/MacQueue.h"

#include <ApplicationServices/ApplicationServices.h>

#include <functional>
#include <memory>

// The tree of one application for one walk. It keeps the elements met so far, whose positions are the
// handles. Main thread; the application is asked on the queue.
class MacAccessibilityTree : public AccessibilityTree,
                             public std::enable_shared_from_this<MacAccessibilityTree>
{
public:
    using Element = CoreFoundationReference<AXUIElementRef>;
    using Activate = std::function<QCoro::Task<void>()>;

    // `name` is for the sentences to the user. `activate` gives the application the focus if it does not have
    // it; asked for before every press.
    MacAccessibilityTree(Element root, QString name, std::shared_ptr<MacQueue> queue, Activate activate);

    AccessibilityElement root() const override { return 0; }
    QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) override;
    QCoro::Task<bool> press(AccessibilityElement element) override;

    // How long one message may take, and all reading of one walk together.
    static constexpr std::chrono::milliseconds messageLimit{1000};
    static constexpr std::chrono::milliseconds walkLimit{10000};

private:
    QString m_name;
    std::shared_ptr<MacQueue> m_queue;
    Activate m_activate;
    QList<Element> m_elements;
    std::chrono::milliseconds m_waited{0};
};
