// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>

#include <optional>
#include <utility>

// A private Wayland session: a headless compositor and a real Xwayland, with a window manager so that its
// windows could receive keys. The environment of this process and its children refers to the session for this
// object's lifetime. Thread: main.
class WaylandSession
{
public:
    WaylandSession();
    ~WaylandSession();
    WaylandSession(const WaylandSession &) = delete;
    WaylandSession &operator=(const WaylandSession &) = delete;

    // Whether everything has started.
    bool isRunning() const { return m_isRunning; }

private:
    bool startCompositor();
    bool startServer();
    bool startManager();
    void setVariable(const char *name, const std::optional<QByteArray> &value);

    QList<std::pair<QByteArray, std::optional<QByteArray>>> m_replaced; // previous values of variables
    QProcess m_compositor;
    QProcess m_server;
    QProcess m_manager;
    bool m_isRunning = false;
};
