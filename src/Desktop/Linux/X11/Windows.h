// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/X11/Clients.h"
#include "Desktop/Linux/X11/Connection.h"
#include "Desktop/Linux/X11/Snapshot.h"

// Reads the window manager's account of the windows and asks it to activate or close one. It remembers which
// windows were active, since nobody else does: so it must see every event of its connection. X thread only.
// Everything throws PlatformError when the X server is gone.
class X11Windows
{
public:
    explicit X11Windows(X11Connection &connection);

    X11Snapshot snapshot();

    // Handles the events that have arrived.
    void drainEvents();

    // The name of the window manager that is running; none when there is none.
    std::optional<QString> windowManager() const;

    // The active window alone, as the window manager tells it at this moment.
    std::optional<std::uint32_t> activeWindow() const;

    // Whether the window, or another one of its application, is active.
    bool isActive(const X11Window &window) const;

    // Whether it is active and keys really go to its application.
    bool hasKeys(const X11Window &window) const;

    // Whether another program has grabbed the keyboard, as a locked screen does: whatever is active, all keys
    // would go there. A menu that the window's application has opened does not count; the keys are for it.
    bool isKeyboardGrabbedFrom(const X11Window &window) const;

    // Asks the window manager to bring the window to the front; it is not yet there on return.
    void requestActivation(std::uint32_t window);

    // The polite request to close; the application may ask the user, or refuse.
    void requestClose(std::uint32_t window);

private:
    struct Requests;

    Requests requestsFor(std::uint32_t window) const;
    std::optional<X11Window> described(const Requests &requests, std::uint32_t currentDesktop) const;
    QString applicationIdentifier(const Requests &requests) const;
    static void addSandboxes(X11Snapshot &snapshot);
    X11Window::Kind kindOf(const QList<std::uint32_t> &types, bool isTransient) const;
    QString textOf(const std::optional<X11Property> &property) const;
    QList<std::uint32_t> rootValues(xcb_atom_t property) const;
    static void addToStacking(X11Snapshot &snapshot);
    void remember(std::optional<std::uint32_t> window);
    bool belongToSameClient(std::uint32_t one, std::uint32_t other) const;
    bool isOfSamePart(std::uint32_t active, const X11Window &window) const;
    bool hasOpenMenu(const X11Window &window) const;

    X11Connection &m_connection;
    X11Clients m_clients{m_connection};
    QList<std::uint32_t> m_recentlyActivated;
};
