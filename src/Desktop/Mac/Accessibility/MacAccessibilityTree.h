// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Mac/CoreFoundationReference.h"
#include "Desktop/Mac/MacQueue.h"

#include <ApplicationServices/ApplicationServices.h>

#include <functional>
#include <memory>

// One application's tree during one walk. Stores the elements found; their indexes are the handles. Queries
// the application on the queue. Thread: main.
class MacAccessibilityTree : public AccessibilityTree,
                             public std::enable_shared_from_this<MacAccessibilityTree>
{
public:
    using Element = CoreFoundationReference<AXUIElementRef>;
    using Activate = std::function<QCoro::Task<void>()>;

    // `name` is for error messages. `activate` focuses the application if necessary; called before every
    // press.
    MacAccessibilityTree(Element root, QString name, std::shared_ptr<MacQueue> queue, Activate activate);

    AccessibilityElement root() const override { return 0; }
    QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) override;
    QCoro::Task<bool> press(AccessibilityElement element) override;

    // Timeouts of one message, and of all reads of one walk together.
    static constexpr std::chrono::milliseconds messageLimit{1000};
    static constexpr std::chrono::milliseconds walkLimit{10000};

private:
    QString m_name;
    std::shared_ptr<MacQueue> m_queue;
    Activate m_activate;
    QList<Element> m_elements;
    std::chrono::milliseconds m_waited{0};
};
