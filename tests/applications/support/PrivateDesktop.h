// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

// The private desktop of the tests: its home folder and processes. Thread: main.
namespace PrivateDesktop {

// The timeout for awaited conditions; long enough for a slow, busy machine.
inline constexpr int patience = 30'000; // milliseconds

// Whether this process runs on a private desktop. Tests kill every application with a window, so they must
// not run elsewhere.
bool isHere();

// What the desktop demands of a new program, if it does: its desktop entry, or the user's permission.
void settle();

// A path in the private home folder.
QString home(const QString &relativePath = {});

void write(const QString &path, const QByteArray &content);
QByteArray read(const QString &path);

// Starts a detached program and discards its output.
void start(const QString &program, const QStringList &arguments = {});

// Starts a program and waits until a window of this class is active. False on timeout.
bool open(const QString &program, const QStringList &arguments, const QString &className);

// Kills every application with a window, and waits until all windows and processes are gone. False on
// timeout.
bool clear();

// Freezes the application that owns windows of this class, and resumes it. `freezeApplication` returns false
// if there is no such window, or the process cannot be stopped.
bool freezeApplication(const QString &className);
void thawApplication(const QString &className);

// Whether the process exists and isn't a zombie.
bool isRunning(qint64 process);

// Whether pictures can be taken here. KWin takes them only with a graphics card.
bool takesPictures();

// A picture of the whole screen, taken by another program. Null if it fails.
QImage picture();

// The processes on this desktop whose command line contains the text.
QList<qint64> processesWith(const QByteArray &partOfCommandLine);

} // namespace PrivateDesktop
