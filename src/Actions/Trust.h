// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The permission to operate other applications. Main thread.
namespace Trust {

// The gate before keys and controls: without the Accessibility permission, asks for it, and throws
// ActionError with this message unless asking was enough.
QCoro::Task<void> requireTrust(QString refusal, Desktop desktop);

// Before a task: switches accessibility on where it is off and nobody has to be asked, and tells whether it
// did. A desktop that cannot is not an error yet: the steps that need it say what is wrong.
QCoro::Task<bool> switchAccessibilityOn(Desktop desktop);

} // namespace Trust
