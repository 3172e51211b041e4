// SPDX-License-Identifier: Apache-2.0
#include "applications/support/WaylandUserConnection.h"

#include <QByteArrayView>
#include <QtGlobal>

#include <chrono>

namespace {

struct Search
{
    const wl_interface &interface;
    void *found = nullptr;
};

void addGlobal(void *data, wl_registry *registry, std::uint32_t name, const char *interface, std::uint32_t)
{
    auto &search = *static_cast<Search *>(data);
    if (QByteArrayView(interface) == search.interface.name)
        search.found = wl_registry_bind(registry, name, &search.interface, 1);
}

void removeGlobal(void *, wl_registry *, std::uint32_t) {}

} // namespace

WaylandUserConnection::WaylandUserConnection() : m_display(wl_display_connect(nullptr))
{
    if (!m_display)
        qFatal("the private desktop's compositor does not answer");
}

void *WaylandUserConnection::bindGlobal(const wl_interface &interface) const
{
    static constexpr wl_registry_listener listener{&addGlobal, &removeGlobal};
    Search search{interface};
    wl_registry *registry = wl_display_get_registry(m_display.get());
    wl_registry_add_listener(registry, &listener, &search);
    roundTrip();
    wl_registry_destroy(registry);
    if (!search.found)
        qFatal("the private desktop has no %s", interface.name);
    return search.found;
}

std::uint32_t WaylandUserConnection::now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}
