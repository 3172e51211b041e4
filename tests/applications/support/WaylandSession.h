// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>

#include <optional>
#include <utility>

// A Wayland session of the test's own: a compositor without a screen, and a real Xwayland. That one has a
// window manager too, so that keys would get to its windows, were any sent. This process's environment, and
// that of what it starts, names the session until this object is gone. Main thread.
class WaylandSession
{
public:
    WaylandSession();
    ~WaylandSession();
    WaylandSession(const WaylandSession &) = delete;
    WaylandSession &operator=(const WaylandSession &) = delete;

    // Whether all of it came up.
    bool isRunning() const { return m_isRunning; }

private:
    bool startCompositor();
    bool startServer();
    bool startManager();
    void setVariable(const char *name, const std::optional<QByteArray> &value);

    QList<std::pair<QByteArray, std::optional<QByteArray>>> m_replaced; // variables as they were
    QProcess m_compositor;
    QProcess m_server;
    QProcess m_manager;
    bool m_isRunning = false;
};
