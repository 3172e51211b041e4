// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// Runs the model's script to completion and returns the result line. Throws ActionError if the script fails.
// Thread: main.
QCoro::Task<QString> appleScript(QString source, Desktop desktop);
