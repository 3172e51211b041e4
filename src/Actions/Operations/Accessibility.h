// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

// Reading and pressing the controls of the frontmost application. Main thread. ActionError says what is
// missing; PlatformError passes through.
namespace Executor {

// The attribute of this name ("AXTitle", "AXRole", …) where the element has it as text.
std::optional<QString> attr(const AccessibilityAttributes &element, const QString &name);

// What the element is called: its title, description, value or help, the first that is not empty; else the
// empty text.
QString label(const AccessibilityAttributes &element);

// The element's children, in order.
QList<AccessibilityElement> children(const AccessibilityAttributes &element);

// The whole frontmost application, menus and all windows included. Without the Accessibility permission, asks
// the user for it and throws.
QCoro::Task<std::shared_ptr<AccessibilityTree>> frontWindowRoot(Desktop desktop);

// The control with this label, else the first whose label contains it; none where there is neither.
QCoro::Task<std::optional<ActionTarget::Control>> findControl(std::shared_ptr<AccessibilityTree> tree,
                                                              QString wanted);

// Presses the control that was found for this label, and gives the result line. Without the Accessibility
// permission, asks the user for it and throws.
QCoro::Task<QString> press(QString wanted, ActionTarget target, Desktop desktop);

// Finds the control in the frontmost application and presses it.
QCoro::Task<QString> click(QString wanted, Desktop desktop);

// The readable controls, in one line.
QCoro::Task<QString> readUI(Desktop desktop);

} // namespace Executor
