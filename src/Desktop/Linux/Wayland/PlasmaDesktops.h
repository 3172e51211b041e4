// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Wayland/Connection.h"

#include <QString>

#include <memory>
#include <vector>

struct org_kde_plasma_virtual_desktop_management;

// Which virtual desktop is shown, from a compositor with the protocol plasma-virtual-desktop. `connection`
// must outlive this object. Thread: main.
class PlasmaDesktops
{
public:
    // KWin offers this protocol to every program.
    static bool isOfferedBy(const WaylandConnection &connection);

    explicit PlasmaDesktops(WaylandConnection &connection);
    ~PlasmaDesktops();
    PlasmaDesktops(const PlasmaDesktops &) = delete;
    PlasmaDesktops &operator=(const PlasmaDesktops &) = delete;

    // The identifier of the desktop that is shown; empty if unknown.
    QString current() const;

private:
    struct VirtualDesktop;
    struct Listener;

    void add(const char *identifier);
    void remove(const QString &identifier);

    org_kde_plasma_virtual_desktop_management *m_management = nullptr; // null if not offered
    std::vector<std::unique_ptr<VirtualDesktop>> m_desktops;
};
