// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QHash>

// Finds the process that owns a window, from the X server's own records (X-Resource). _NET_WM_PID isn't
// trusted: with PID namespaces, two sandboxed applications can both be process 2. Thread: X.
class X11Clients
{
public:
    explicit X11Clients(X11Connection &connection);

    // The process of each window, in the same order; minus the client identifier if the client's process is
    // unknown or on another computer.
    QList<qint64> processes(const QList<std::uint32_t> &windows) const;

    // The client that created the window: the high bits of the identifiers of all its resources.
    std::uint32_t clientOf(std::uint32_t window) const;

private:
    QHash<std::uint32_t, qint64> askServer(const QList<std::uint32_t> &windows) const;

    X11Connection &m_connection;
    bool m_serverReports = false;
};

// The rule that determines a window's process. A pure function.
namespace X11Claims {

// What the window's own properties say.
struct Claim
{
    qint64 process = 0; // 0 if unset
    QByteArray machine; // empty if unset
};

// This program and its computer.
struct Surroundings
{
    qint64 ownProcess = 0;
    QByteArray machine;
    // Whether the server reports process identifiers of our PID namespace; false over a network or in a
    // sandbox.
    bool serverReports = false;
};

// `reported` is the process that the server reports for the client, or 0.
qint64 processOf(const Claim &claim, std::uint32_t client, qint64 reported, const Surroundings &surroundings);

} // namespace X11Claims
