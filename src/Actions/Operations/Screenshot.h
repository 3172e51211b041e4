// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Captures the whole screen to this file. Throws ActionError if no file results; passes PlatformError on.
// Thread: main.
QCoro::Task<void> screenshot(QString path, Desktop desktop);
