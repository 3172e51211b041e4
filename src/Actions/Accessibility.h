// SPDX-License-Identifier: Apache-2.0
#pragma once

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

// Presses the control with this label, else the first whose label contains it, and gives the result line.
QCoro::Task<QString> click(QString wanted, Desktop desktop);

// The readable controls, in one line.
QCoro::Task<QString> readUI(Desktop desktop);

} // namespace Executor
