// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"

#include <QCoroTask>

#include <memory>

namespace Atspi {

// Performs the object's press action, or that of the button inside it if the object only wraps one. Returns
// false if there is no such action, or the object refuses or no longer exists. If the press opens a modal
// dialog, the reply may not come before the dialog closes: on timeout, the press counts as done if the
// application responds to another call. Throws PlatformError if it doesn't respond or has quit, or if the bus
// is lost. Thread: main.
QCoro::Task<bool> press(std::shared_ptr<AtspiApplication> application, AtspiReference object);

} // namespace Atspi
