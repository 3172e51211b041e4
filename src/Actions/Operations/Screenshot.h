// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Captures the whole screen into this file. Throws ActionError when that leaves no file; PlatformError passes
// through. Main thread.
QCoro::Task<void> screenshot(QString path, Desktop desktop);
