// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/PlasmaDesktops.h"

#include "Desktop/Linux/Wayland/Object.h"

#include <algorithm>

#include <plasma-virtual-desktop-client-protocol.h>

struct PlasmaDesktops::VirtualDesktop
{
    WaylandObject<org_kde_plasma_virtual_desktop, org_kde_plasma_virtual_desktop_destroy> handle;
    QString identifier;
    bool isShown = false;
};

// The protocol's callbacks.
struct PlasmaDesktops::Listener
{
    using Handle = org_kde_plasma_virtual_desktop;
    using Management = org_kde_plasma_virtual_desktop_management;

    static PlasmaDesktops &of(void *data) { return *static_cast<PlasmaDesktops *>(data); }
    static VirtualDesktop &desktopOf(void *data) { return *static_cast<VirtualDesktop *>(data); }

    static void created(void *data, Management *, const char *identifier, std::uint32_t)
    {
        of(data).add(identifier);
    }
    static void gone(void *data, Management *, const char *identifier)
    {
        of(data).remove(QString::fromUtf8(identifier));
    }
    static void allDone(void *, Management *) {}

    static void identifier(void *, Handle *, const char *) {}
    static void name(void *, Handle *, const char *) {}
    static void activated(void *data, Handle *) { desktopOf(data).isShown = true; }
    static void deactivated(void *data, Handle *) { desktopOf(data).isShown = false; }
    static void done(void *, Handle *) {}
    static void removed(void *, Handle *) {}

    static constexpr org_kde_plasma_virtual_desktop_management_listener management{&created, &gone, &allDone};
    static constexpr org_kde_plasma_virtual_desktop_listener handle{&identifier,  &name, &activated,
                                                                    &deactivated, &done, &removed};
};

bool PlasmaDesktops::isOfferedBy(const WaylandConnection &connection)
{
    return connection.offers(org_kde_plasma_virtual_desktop_management_interface);
}

PlasmaDesktops::PlasmaDesktops(WaylandConnection &connection)
    : m_management(connection.bind<org_kde_plasma_virtual_desktop_management>(
          org_kde_plasma_virtual_desktop_management_interface, 1))
{
    if (m_management)
        org_kde_plasma_virtual_desktop_management_add_listener(m_management, &Listener::management, this);
}

PlasmaDesktops::~PlasmaDesktops()
{
    m_desktops.clear();
    if (m_management)
        org_kde_plasma_virtual_desktop_management_destroy(m_management);
}

void PlasmaDesktops::add(const char *identifier)
{
    auto desktop = std::make_unique<VirtualDesktop>();
    desktop->identifier = QString::fromUtf8(identifier);
    desktop->handle.reset(
        org_kde_plasma_virtual_desktop_management_get_virtual_desktop(m_management, identifier));
    org_kde_plasma_virtual_desktop_add_listener(desktop->handle.get(), &Listener::handle, desktop.get());
    m_desktops.push_back(std::move(desktop));
}

void PlasmaDesktops::remove(const QString &identifier)
{
    std::erase_if(m_desktops, [&identifier](const auto &each) { return each->identifier == identifier; });
}

QString PlasmaDesktops::current() const
{
    const auto shown =
        std::find_if(m_desktops.cbegin(), m_desktops.cend(), [](const auto &each) { return each->isShown; });
    return shown == m_desktops.cend() ? QString() : (*shown)->identifier;
}
