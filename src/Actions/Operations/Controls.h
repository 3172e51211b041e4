// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/ActionTarget.h"
#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QList>
#include <QString>

#include <memory>
#include <optional>

// Reads and presses the controls of the frontmost application. Throws ActionError if something is missing;
// passes PlatformError on. Thread: main.
namespace Controls {

// The text attribute with this name ("AXTitle", "AXRole", …), if the element has it.
std::optional<QString> attr(const AccessibilityAttributes &element, const QString &name);

// The element's title, description, value or help: the first that is not empty, or an empty string.
QString label(const AccessibilityAttributes &element);

QList<AccessibilityElement> children(const AccessibilityAttributes &element);

// The tree of the target's frontmost application, including menus and all windows. Without the Accessibility
// permission, requests it and throws.
QCoro::Task<std::shared_ptr<AccessibilityTree>> frontWindowRoot(ActionTarget target, Desktop desktop);

// Finds the control with this label, or else the first whose label contains it.
QCoro::Task<std::optional<ActionTarget::Control>> findControl(std::shared_ptr<AccessibilityTree> tree,
                                                              QString wanted);

// Presses the target's control, called `label` in the action, and returns the result line. Without the
// Accessibility permission, requests it and throws.
QCoro::Task<QString> click(QString label, ActionTarget target, Desktop desktop);

// The readable controls of the target's frontmost application, in one line. Throws like `click`.
QCoro::Task<QString> readUI(ActionTarget target, Desktop desktop);

} // namespace Controls
