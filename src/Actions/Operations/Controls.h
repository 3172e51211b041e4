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
namespace Controls {

// The attribute of this name ("AXTitle", "AXRole", …) where the element has it as text.
std::optional<QString> attr(const AccessibilityAttributes &element, const QString &name);

// What the element is called: its title, description, value or help, the first that is not empty; else the
// empty text.
QString label(const AccessibilityAttributes &element);

// The element's children, in order.
QList<AccessibilityElement> children(const AccessibilityAttributes &element);

// The whole application that was frontmost when the target was found, menus and all windows included. Without
// the Accessibility permission, asks the user for it and throws.
QCoro::Task<std::shared_ptr<AccessibilityTree>> frontWindowRoot(ActionTarget target, Desktop desktop);

// The control with this label, else the first whose label contains it; none where there is neither.
QCoro::Task<std::optional<ActionTarget::Control>> findControl(std::shared_ptr<AccessibilityTree> tree,
                                                              QString wanted);

// Presses the target's control, which the action calls `label`, and gives the result line. Without the
// Accessibility permission, asks the user for it and throws.
QCoro::Task<QString> click(QString label, ActionTarget target, Desktop desktop);

// The readable controls of the target's frontmost application, in one line. Throws as `click` does.
QCoro::Task<QString> readUI(ActionTarget target, Desktop desktop);

} // namespace Controls
