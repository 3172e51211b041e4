// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

namespace Executor {

// The gate before keys and controls: without the Accessibility permission, asks the user for it and throws
// ActionError with this message. Main thread.
QCoro::Task<void> requireTrust(QString refusal, Desktop desktop);

} // namespace Executor
