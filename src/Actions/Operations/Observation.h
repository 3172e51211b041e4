// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The first eight different windows of other programs, front to back: "Safari — News; Mail", or "none", also
// when the desktop cannot tell. Never throws. Main thread.
QCoro::Task<QString> windowSummary(Desktop desktop);
