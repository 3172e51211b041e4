// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Connection.h"

#include <QHash>

// Which process is behind a window, as the X server itself knows it. What a window says of that is not
// believed: in a sandbox of its own numbering, two applications can both be process 2. X thread only.
class X11Clients
{
public:
    explicit X11Clients(X11Connection &connection);

    // The process of each window, in their order. A client whose process is none that this computer could
    // know stands for itself: minus its identifier.
    QList<qint64> processes(const QList<std::uint32_t> &windows) const;

    // All that one client has made share the upper bits of their identifiers.
    std::uint32_t clientOf(std::uint32_t window) const;

private:
    QHash<std::uint32_t, qint64> askServer(const QList<std::uint32_t> &windows) const;

    X11Connection &m_connection;
    bool m_serverTells = false;
};

// The rule by which one window's process is told. A pure function.
namespace X11Claims {

// What a window says of itself.
struct Claim
{
    qint64 process = 0; // 0: nothing
    QByteArray machine; // empty: nothing
};

// What is known about this computer and this program.
struct Surroundings
{
    qint64 ownProcess = 0;
    QByteArray machine;
    // Whether the server's process numbers mean the same to us; not over a network, or in a sandbox.
    bool serverTells = false;
};

// `told`: the process that the server knows for the client, 0 where it knows none.
qint64 processOf(const Claim &claim, std::uint32_t client, qint64 told, const Surroundings &surroundings);

} // namespace X11Claims
