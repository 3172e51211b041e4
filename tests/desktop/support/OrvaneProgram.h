// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The program itself, with the practice model, on the private desktop. Main thread.
namespace OrvaneProgram {

// Puts the practice model where the program looks for the default one.
void installPracticeModel();

// Has the program carry out the task in a terminal and allows every step that it asks about. What it said,
// with the terminal's control sequences; it is ended when it takes longer than a task may.
QString carryOut(const QString &task);

} // namespace OrvaneProgram
