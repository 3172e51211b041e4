// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"

#include <QCoroTask>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

// Presses with real keys, for GTK 3. It carries out an action inside the message that asks for it. Where that
// opens a dialog and waits for its answer, as items of menus and buttons like "Save As..." do, the message
// does not end before the dialog does: nothing else is answered, and at the next key the application waits
// for itself for good. A key is no message.
namespace Atspi {

// Sends a key, by its macOS virtual key code, to the application that is pressed in, and tells whether it is
// known to have been handled. Throws PlatformError when it cannot be sent.
using StrikeKey = std::function<QCoro::Task<bool>(std::uint16_t virtualKey)>;

// Presses a button that is seen, or an item of a menu. Menus are opened on the way; the keyboard focus is
// returned to where it was, unless the press has moved it. False when the control is greyed out. None where a
// key cannot do it, to be pressed like the controls of all other toolkits. Throws PlatformError when the key
// cannot be sent, and what `AtspiApplication::exchange` throws. Main thread.
QCoro::Task<std::optional<bool>> pressWithKey(std::shared_ptr<AtspiApplication> application,
                                              AtspiReference object, StrikeKey strikeKey);

} // namespace Atspi
