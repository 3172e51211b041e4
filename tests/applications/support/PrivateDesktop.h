// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The private desktop in which the tests run: its home folder, its processes. Main thread.
namespace PrivateDesktop {

// How long a test waits for what must happen in the end: long, for a slow machine that is busy with other
// things.
inline constexpr int patience = 30'000; // milliseconds

// Whether this process really runs on a private desktop. Tests end every window that they find, so they must
// not start anywhere else.
bool isHere();

// A path inside the private home folder.
QString home(const QString &relativePath = {});

void write(const QString &path, const QByteArray &content);
QByteArray read(const QString &path);

// Starts a program on its own; its output goes nowhere.
void start(const QString &program, const QStringList &arguments = {});

// Starts it and waits until a window of that class is active. False when that takes too long.
bool open(const QString &program, const QStringList &arguments, const QString &className);

// Ends every application that has a window, without asking, and waits until all windows and processes are
// gone. False when that takes too long.
bool clear();

// Makes the application with the windows of that class hang, and lets it go on. False when it has no window,
// or cannot be stopped.
bool freezeApplication(const QString &className);
void thawApplication(const QString &className);

// Whether a process of that identifier is there and has not ended.
bool isRunning(qint64 process);

// The process identifiers on this desktop whose command line contains the text.
QList<qint64> processesWith(const QByteArray &partOfCommandLine);

} // namespace PrivateDesktop
