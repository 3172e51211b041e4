// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

namespace Executor {

// The gate before keys and controls: without the Accessibility permission, asks for it, and throws
// ActionError with this message unless that alone was enough. Main thread.
QCoro::Task<void> requireTrust(QString refusal, Desktop desktop);

// Before a task: switches accessibility on where it is off and nobody has to be asked, and tells whether it
// did. A desktop that cannot is not an error yet: the steps that need it say what is wrong. Main thread.
QCoro::Task<bool> switchAccessibilityOn(Desktop desktop);

} // namespace Executor
