// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Accessibility.h"
#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"
#include "Desktop/Linux/Atspi/Reader.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>

#include <memory>
#include <optional>

class AtspiEnvironment;

// The tree of one application on the accessibility bus. It keeps the objects met so far, whose positions are
// the handles, and what the application told in bulk when the tree was made. Main thread.
class AtspiTree : public AccessibilityTree, public std::enable_shared_from_this<AtspiTree>
{
public:
    // `environment` outlives every press. `titles`: of the windows that the user has in front, the foremost
    // first; they come first among the root's children.
    AtspiTree(std::shared_ptr<AtspiApplication> application, std::shared_ptr<const AtspiCache> cache,
              AtspiEnvironment &environment, qint64 processIdentifier, QStringList titles);

    AccessibilityElement root() const override { return 0; }
    std::optional<AccessibilityElement> frontWindow() const override { return m_frontWindow; }
    QCoro::Task<QList<AccessibilityAttributes>> read(QList<AccessibilityElement> elements) override;
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
    qint64 m_processIdentifier;
    QStringList m_titles;
    QList<Object> m_objects;
    std::optional<AccessibilityElement> m_frontWindow;
};

namespace Atspi {

// What an application tells of one of its windows.
struct WindowStanding
{
    QString name; // cleaned
    bool isActive = false;
};

// Positions of the windows, those in front first: the ones of these titles in the order of the titles, then
// the rest; of what is equal in that the active one, then the order that there was. A pure function.
QList<qsizetype> frontFirst(const QList<WindowStanding> &windows, const QStringList &titles);

// Whether a window bears one of the titles or says that it is active. A pure function.
bool isInFront(const WindowStanding &window, const QStringList &titles);

} // namespace Atspi
