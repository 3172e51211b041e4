// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The scripts that the model writes. Main thread.
namespace Executor {

// Runs the script to its end and gives the result line. Throws ActionError when the script fails.
QCoro::Task<QString> appleScript(QString source, Desktop desktop);

} // namespace Executor
