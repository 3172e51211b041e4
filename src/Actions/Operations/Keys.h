// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

// Sends keys and text to the focused application. Without the Accessibility permission, requests it and
// throws ActionError. Passes PlatformError on. Thread: main.
namespace Keys {

// Key names in lower case, with their virtual key codes (ANSI layout).
const QHash<QString, std::uint16_t> &keyCodes();

// The flags for these modifier names, case-insensitive. Ignores unknown names.
EventFlags modifierFlags(const QStringList &names);

// Presses a key with modifiers, in the receiver only. Throws ActionError for an unknown key.
QCoro::Task<void> keystroke(QString key, QStringList modifiers, std::optional<RunningApplication> receiver,
                            Desktop desktop);

// Types the text literally, including line breaks, into the receiver only.
QCoro::Task<void> typeText(QString text, std::optional<RunningApplication> receiver, Desktop desktop);

// Presses a key in the current frontmost application.
QCoro::Task<void> keystroke(QString key, QStringList modifiers, Desktop desktop);

} // namespace Keys
