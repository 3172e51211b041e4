// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Runs a script that the model wrote to its end, and gives the result line. Throws ActionError when the
// script fails. Main thread.
QCoro::Task<QString> appleScript(QString source, Desktop desktop);
