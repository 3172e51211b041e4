// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"

#include <QCoroTask>

#include <memory>

namespace Atspi {

// Carries out the action of the object that stands for a press, or of the button inside it where it is only
// the shell of one. False when there is none, or it refuses or is gone.
// A press that opens a dialog may be answered only when that dialog is closed: it counts as done as soon as
// the application shows that it still answers other questions. Throws PlatformError when it does not, has
// quit, or the bus is gone. Main thread.
QCoro::Task<bool> press(std::shared_ptr<AtspiApplication> application, AtspiReference object);

} // namespace Atspi
