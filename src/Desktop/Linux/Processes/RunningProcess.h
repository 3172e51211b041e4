// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QStringList>
#include <QtGlobal>

// Whether the process exists and isn't a zombie. Any thread.
bool isRunningProcess(qint64 process);

// Whether any of its threads is running, or waiting for a CPU or a disk. Any thread.
bool isBusyProcess(qint64 process);

// Whether it or any process that it has started, directly or not, is busy: browsers consist of several. Any
// thread.
bool isBusyApplication(qint64 process);

// The process that listened at the other end of a connected local socket; 0 if unknown. Any thread.
qint64 peerProcess(qintptr socket);

// The processes that run a program with one of these names: the program's file, or what it was started as, or
// the script that it runs. Any thread.
QList<qint64> processesRunning(const QStringList &names);

// The process that has started it, or has inherited it since; 0 when it does not exist. Any thread.
qint64 parentProcess(qint64 process);
