// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The first eight distinct windows of other programs, front to back ("Safari — News; Mail"), or "none", even
// if the desktop doesn't respond. Never throws. Thread: main.
QCoro::Task<QString> windowSummary(Desktop desktop);
