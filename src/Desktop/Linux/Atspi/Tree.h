// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"
#include "Desktop/Linux/Atspi/Environment.h"
#include "Desktop/Linux/Atspi/Reader.h"

#include <QCoroTask>
#include <QList>

#include <memory>
#include <optional>

// The AT-SPI tree of one application. Element handles are indices into the list of objects seen so far. Holds
// the cache fetched at construction. Thread: main.
class AtspiTree : public AccessibilityTree, public std::enable_shared_from_this<AtspiTree>
{
public:
    // `environment` must outlive every press. The root's children are the application's windows,
    // those in front first.
    AtspiTree(std::shared_ptr<AtspiApplication> application, std::shared_ptr<const AtspiCache> cache,
              AtspiEnvironment &environment, RunningApplication owner, AtspiTitles titles);

    AccessibilityElement root() const override { return 0; }
    std::optional<AccessibilityElement> frontWindow() const override { return m_frontWindow; }
    QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) override;
    QCoro::Task<std::optional<QString>> pageAddress() override;
    QCoro::Task<bool> press(AccessibilityElement element) override;

private:
    struct Object
    {
        AtspiReference reference;
        AtspiRole parentRole = AtspiRole::Invalid;
    };

    QCoro::Task<AccessibilityAttributes> rootAttributes(AtspiReading reading);
    AccessibilityAttributes attributes(const AtspiReading &reading, const QList<AtspiReference> &children);

    std::shared_ptr<AtspiApplication> m_application;
    std::shared_ptr<const AtspiCache> m_cache;
    std::shared_ptr<AtspiOutline> m_outline;
    AtspiEnvironment &m_environment;
    RunningApplication m_owner;
    AtspiTitles m_titles;
    QList<Object> m_objects;
    std::optional<AccessibilityElement> m_frontWindow;
};

namespace Atspi {

// One window, as described by its application.
struct WindowState
{
    QString name; // cleaned
    bool isActive = false;
};

// Returns the indices of the application's windows, without foreign ones: first the windows in front, in the
// order of their titles, then the rest; among equals the active one first, otherwise stable. A pure function.
QList<qsizetype> frontFirst(const QList<WindowState> &windows, const AtspiTitles &titles);

// Whether the window has the title of a window in front or is active. A pure function.
bool isInFront(const WindowState &window, const AtspiTitles &titles);

} // namespace Atspi
