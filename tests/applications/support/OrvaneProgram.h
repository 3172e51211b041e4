// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// The program itself, with the practice model, on the private desktop. Main thread.
namespace OrvaneProgram {

QString path();

// Puts the practice model where the program looks for the default one.
void installPracticeModel();

struct Ending
{
    int status = -1; // none when it took longer than it may, or crashed
    QString output;
};

// Runs the program to its end, with no terminal. This thread stands still meanwhile, so that the X server
// may.
Ending run(const QStringList &arguments,
           const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

// Has the program carry out the task in a terminal and allows every step that it asks about. What it said,
// with the terminal's control sequences; it is ended when it takes longer than a task may.
QString carryOut(const QString &task);

} // namespace OrvaneProgram
