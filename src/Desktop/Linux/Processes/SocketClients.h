// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QtGlobal>

// The path at which the other end of a connected local socket listens; empty if unknown. Any thread.
QByteArray peerPath(qintptr socket);

// Those of the processes that are connected to the local socket listening at `path`. None if the kernel
// doesn't report connections, and none of other users' processes. Any thread.
QList<qint64> clientsAmong(const QList<qint64> &processes, const QByteArray &path);
