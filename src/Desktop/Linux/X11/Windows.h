// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"
#include "Desktop/Linux/X11/Clients.h"
#include "Desktop/Linux/X11/Connection.h"

// Reads the window manager's state and sends it activation and close requests. Records the history of active
// windows, which the protocol doesn't provide, so it must receive every event of its connection. Throws
// PlatformError if the X server is lost. Thread: X.
class X11Windows
{
public:
    explicit X11Windows(X11Connection &connection);

    WindowSnapshot snapshot();

    // Handles the queued events.
    void drainEvents();

    // The name of the running window manager, or nothing if there is none.
    std::optional<QString> windowManager() const;

    // The current active window.
    std::optional<std::uint32_t> activeWindow() const;

    // Whether this window or another of the same application is active.
    bool isActive(const DesktopWindow &window) const;

    // Whether it is active and its application has the input focus.
    bool hasKeys(const DesktopWindow &window) const;

    // Whether another program has grabbed the keyboard, as a screen locker does, so that it would receive all
    // keys. Grabs by an open menu of the window's own application don't count.
    bool isKeyboardGrabbedFrom(const DesktopWindow &window) const;

    // Asks the window manager to activate the window; doesn't wait for it.
    void requestActivation(std::uint32_t window);

    // Requests that the window close; the application may prompt the user, or refuse.
    void requestClose(std::uint32_t window);

private:
    struct Requests;

    Requests requestsFor(std::uint32_t window) const;
    std::optional<DesktopWindow> described(const Requests &requests, std::uint32_t currentDesktop) const;
    QString applicationIdentifier(const Requests &requests) const;
    static void addSandboxes(WindowSnapshot &snapshot);
    DesktopWindow::Kind kindOf(const QList<std::uint32_t> &types, bool isTransient) const;
    QString textOf(const std::optional<X11Property> &property) const;
    QList<std::uint32_t> rootValues(xcb_atom_t property) const;
    static void addToStacking(WindowSnapshot &snapshot);
    void remember(std::optional<std::uint32_t> window);
    bool belongToSameClient(std::uint32_t one, std::uint32_t other) const;
    bool isOfSamePart(std::uint32_t active, const DesktopWindow &window) const;
    bool hasOpenMenu(const DesktopWindow &window) const;

    X11Connection &m_connection;
    X11Clients m_clients{m_connection};
    QList<std::uint32_t> m_recentlyActivated;
};
