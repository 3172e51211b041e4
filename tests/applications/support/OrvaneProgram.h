// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

// The program itself, with the practice model, on the private desktop. Thread: main.
namespace OrvaneProgram {

QString path();

// Installs the practice model in place of the default model.
void installPracticeModel();

// Has the program make itself known to a desktop that demands it. GNOME's demands it before the login. False
// on timeout.
bool introduce();

struct Ending
{
    int status = -1; // -1 after a timeout or crash
    QString output;
};

// Runs the program until it exits, without a terminal. Blocks this thread, so that the X server may be
// stopped meanwhile.
Ending run(const QStringList &arguments,
           const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

// Runs a task in a terminal and approves every step. Returns the output without control sequences and
// progress lines. Kills the program on timeout.
QString carryOut(const QString &task);

} // namespace OrvaneProgram
