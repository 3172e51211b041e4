// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

// Keys and typed text for the application that has the focus. Main thread. Without the Accessibility
// permission, both operations ask the user for it and throw ActionError; PlatformError passes through.
namespace Keys {

// Key names, in lower case, and their virtual key codes (ANSI layout).
const QHash<QString, std::uint16_t> &keyCodes();

// The flags of these modifier names, in any letter case; unknown names are ignored.
EventFlags modifierFlags(const QStringList &names);

// Presses one key with these modifiers, in the receiver and in no other application. Throws ActionError for a
// key that is not in the table.
QCoro::Task<void> keystroke(QString key, QStringList modifiers, std::optional<RunningApplication> receiver,
                            Desktop desktop);

// Types the text literally, line breaks included, into the receiver and no other application.
QCoro::Task<void> typeText(QString text, std::optional<RunningApplication> receiver, Desktop desktop);

// Presses one key in the application that is frontmost now.
QCoro::Task<void> keystroke(QString key, QStringList modifiers, Desktop desktop);

} // namespace Keys
