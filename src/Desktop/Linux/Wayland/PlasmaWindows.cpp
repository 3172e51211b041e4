// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/PlasmaWindows.h"

#include "Base/Text.h"
#include "Desktop/Linux/Wayland/Object.h"
#include "Desktop/Linux/WindowSystem/Activation.h"

#include <QCoreApplication>

#include <algorithm>

#include <plasma-window-management-client-protocol.h>

using namespace Qt::StringLiterals;

namespace {

// From 17 on the stacking order can be requested. In earlier versions it is announced in one message, which
// is too long if there are many windows.
constexpr std::uint32_t version = 17;

constexpr std::uint32_t activeState = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;

} // namespace

// A window as announced so far.
struct PlasmaWindows::Window
{
    PlasmaWindows *owner = nullptr;
    WaylandObject<org_kde_plasma_window, org_kde_plasma_window_destroy> handle;
    std::uint32_t identifier = 0;
    QString uuid;
    QString title;
    QString applicationIdentifier;
    QString resourceName;
    QStringList desktops; // none: it is on all
    qint64 process = 0;
    std::uint32_t parent = 0;
    std::uint32_t states = 0;
    bool isAnnounced = false; // completely, once

    bool has(std::uint32_t state) const { return states & state; }
};

// The protocol's callbacks.
struct PlasmaWindows::Listener
{
    using Handle = org_kde_plasma_window;
    using Management = org_kde_plasma_window_management;
    using Order = org_kde_plasma_stacking_order;

    static Window &of(void *data) { return *static_cast<Window *>(data); }

    static void showDesktop(void *, Management *, std::uint32_t) {}
    static void window(void *, Management *, std::uint32_t) {}
    static void stackingOrder(void *, Management *, wl_array *) {}
    static void stackingOrderUuids(void *, Management *, const char *) {}
    static void windowWithUuid(void *data, Management *, std::uint32_t, const char *uuid)
    {
        static_cast<PlasmaWindows *>(data)->add(uuid);
    }
    static void stackingOrderChanged(void *, Management *) {}

    static void title(void *data, Handle *, const char *text)
    {
        of(data).title = Text::cleaned(QString::fromUtf8(text));
    }
    static void applicationIdentifier(void *data, Handle *, const char *text)
    {
        of(data).applicationIdentifier = QString::fromUtf8(text);
    }
    static void state(void *data, Handle *, std::uint32_t states)
    {
        Window &window = of(data);
        const bool wasActive = window.has(activeState);
        window.states = states;
        if (wasActive || !window.has(activeState))
            return;
        QList<std::uint32_t> &recent = window.owner->m_recentlyActivated;
        recent.removeAll(window.identifier);
        recent.prepend(window.identifier);
    }
    static void desktopNumber(void *, Handle *, std::int32_t) {}
    static void iconName(void *, Handle *, const char *) {}
    static void unmapped(void *data, Handle *) { of(data).owner->remove(&of(data)); }
    static void initialState(void *data, Handle *) { of(data).isAnnounced = true; }
    static void parent(void *data, Handle *, Handle *parent)
    {
        of(data).parent = parent ? of(org_kde_plasma_window_get_user_data(parent)).identifier : 0;
    }
    static void geometry(void *, Handle *, std::int32_t, std::int32_t, std::uint32_t, std::uint32_t) {}
    static void icon(void *, Handle *) {}
    static void process(void *data, Handle *, std::uint32_t process) { of(data).process = process; }
    static void desktopEntered(void *data, Handle *, const char *desktop)
    {
        of(data).desktops.append(QString::fromUtf8(desktop));
    }
    static void desktopLeft(void *data, Handle *, const char *desktop)
    {
        of(data).desktops.removeAll(QString::fromUtf8(desktop));
    }
    static void menu(void *, Handle *, const char *, const char *) {}
    static void activity(void *, Handle *, const char *) {}
    static void resourceName(void *data, Handle *, const char *text)
    {
        of(data).resourceName = QString::fromUtf8(text);
    }

    static void orderedWindow(void *data, Order *, const char *uuid)
    {
        (*static_cast<StackingOrder *>(data))->append(QString::fromUtf8(uuid));
    }
    static void orderDone(void *data, Order *order)
    {
        delete static_cast<StackingOrder *>(data);
        org_kde_plasma_stacking_order_destroy(order);
    }

    static constexpr org_kde_plasma_window_management_listener management{
        &showDesktop, &window, &stackingOrder, &stackingOrderUuids, &windowWithUuid, &stackingOrderChanged};
    static constexpr org_kde_plasma_window_listener handle{
        &title,    &applicationIdentifier, &state,       &desktopNumber, &iconName,
        &unmapped, &initialState,          &parent,      &geometry,      &icon,
        &process,  &desktopEntered,        &desktopLeft, &menu,          &activity,
        &activity, &resourceName};
    static constexpr org_kde_plasma_stacking_order_listener order{&orderedWindow, &orderDone};
};

bool PlasmaWindows::isOfferedBy(const WaylandConnection &connection)
{
    return connection.offers(org_kde_plasma_window_management_interface, version);
}

bool PlasmaWindows::isWithheldBy(const WaylandConnection &connection)
{
    return PlasmaDesktops::isOfferedBy(connection) && !isOfferedBy(connection);
}

PlasmaWindows::PlasmaWindows(WaylandConnection &connection, Clock &clock)
    : m_connection(connection), m_clock(clock), m_desktops(connection),
      m_management(connection.bind<org_kde_plasma_window_management>(
          org_kde_plasma_window_management_interface, version))
{
    org_kde_plasma_window_management_add_listener(m_management, &Listener::management, this);
    m_connection.flush();
}

PlasmaWindows::~PlasmaWindows()
{
    m_windows.clear();
    org_kde_plasma_window_management_destroy(m_management);
}

void PlasmaWindows::add(const char *uuid)
{
    auto window = std::make_unique<Window>();
    window->owner = this;
    window->uuid = QString::fromUtf8(uuid);
    window->handle.reset(org_kde_plasma_window_management_get_window_by_uuid(m_management, uuid));
    window->identifier = ++m_lastIdentifier;
    org_kde_plasma_window_add_listener(window->handle.get(), &Listener::handle, window.get());
    m_windows.push_back(std::move(window));
}

void PlasmaWindows::remove(const Window *window)
{
    m_recentlyActivated.removeAll(window->identifier);
    std::erase_if(m_windows, [window](const auto &each) { return each.get() == window; });
}

PlasmaWindows::Window *PlasmaWindows::find(std::uint32_t identifier) const
{
    const auto found = std::find_if(m_windows.cbegin(), m_windows.cend(), [identifier](const auto &each) {
        return each->identifier == identifier;
    });
    return found == m_windows.cend() ? nullptr : found->get();
}

// The list is filled when the compositor has handled the request. It is shared, since who asked may have
// stopped waiting.
PlasmaWindows::StackingOrder PlasmaWindows::requestStackingOrder()
{
    const StackingOrder order = std::make_shared<QStringList>();
    org_kde_plasma_stacking_order *request =
        org_kde_plasma_window_management_get_stacking_order(m_management);
    org_kde_plasma_stacking_order_add_listener(request, &Listener::order, new StackingOrder(order));
    return order;
}

QList<std::uint32_t> PlasmaWindows::frontToBack(const QStringList &bottomToTop) const
{
    QList<std::uint32_t> result;
    for (const QString &uuid : bottomToTop) {
        for (const std::unique_ptr<Window> &window : m_windows) {
            if (window->isAnnounced && window->uuid == uuid)
                result.prepend(window->identifier);
        }
    }
    return result;
}

DesktopWindow PlasmaWindows::described(const Window &announced) const
{
    DesktopWindow window;
    window.identifier = announced.identifier;
    window.process = announced.process;
    window.title = announced.title;
    window.instance = announced.resourceName;
    window.className = announced.applicationIdentifier;
    window.applicationIdentifier = announced.applicationIdentifier;
    window.transientFor = announced.parent;
    window.belongsInTaskBar = !announced.has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPTASKBAR);
    const bool isShell =
        !window.belongsInTaskBar && announced.has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_SKIPSWITCHER);
    window.kind = announced.parent ? DesktopWindow::Kind::Dialog
                  : isShell        ? DesktopWindow::Kind::Shell
                                   : DesktopWindow::Kind::Application;
    window.isMinimised = announced.has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_MINIMIZED);
    window.isOnCurrentDesktop =
        announced.desktops.isEmpty() || announced.desktops.contains(m_desktops.current());
    window.canBeClosed = announced.has(ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_CLOSEABLE);
    return window;
}

QCoro::Task<WindowSnapshot> PlasmaWindows::snapshot()
{
    // The first announces new windows, the second tells their properties.
    co_await m_connection.roundTrip();
    const StackingOrder order = requestStackingOrder();
    co_await m_connection.roundTrip();
    WindowSnapshot snapshot;
    snapshot.recentlyActivated = m_recentlyActivated;
    snapshot.stacking = frontToBack(*order);
    for (const std::unique_ptr<Window> &window : m_windows) {
        if (!window->isAnnounced)
            continue;
        snapshot.windows.append(described(*window));
        if (window->has(activeState))
            snapshot.activeWindow = window->identifier;
        if (!snapshot.stacking.contains(window->identifier))
            snapshot.stacking.append(window->identifier);
    }
    co_return snapshot;
}

QCoro::Task<void> PlasmaWindows::bringForward(DesktopWindow window)
{
    const auto request = [this](std::uint32_t identifier) { return activate(identifier); };
    return Activation::bringForward(*this, m_clock, window, request);
}

QCoro::Task<void> PlasmaWindows::activate(std::uint32_t window)
{
    co_await m_connection.roundTrip();
    if (const Window *found = find(window))
        org_kde_plasma_window_set_state(found->handle.get(), activeState, activeState);
    m_connection.flush();
}

QCoro::Task<void> PlasmaWindows::close(QList<DesktopWindow> windows)
{
    co_await m_connection.roundTrip();
    for (const DesktopWindow &window : windows) {
        if (const Window *found = find(window.identifier))
            org_kde_plasma_window_close(found->handle.get());
    }
    m_connection.flush();
}

QCoro::Task<QString> PlasmaWindows::startupIdentifier()
{
    // KWin knows only tokens that it has given to a window with the focus. New windows are activated anyway.
    co_return u"orvane-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++m_launches);
}
