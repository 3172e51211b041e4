// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Toplevels.h"

#include "Base/Text.h"
#include "Desktop/Linux/Processes/RunningProcess.h"
#include "Desktop/Linux/Wayland/Object.h"
#include "Desktop/Linux/WindowSystem/Activation.h"

#include <QGuiApplication>

#include <algorithm>

#include <wlr-foreign-toplevel-management-unstable-v1-client-protocol.h>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint32_t managerVersion = 3; // from 3 on a dialog has its parent

bool contains(wl_array *states, std::uint32_t state)
{
    const auto *first = static_cast<const std::uint32_t *>(states->data);
    const auto *last = first + states->size / sizeof(std::uint32_t);
    return std::find(first, last, state) != last;
}

bool isOwn(const QString &applicationIdentifier)
{
    return !applicationIdentifier.isEmpty() && applicationIdentifier == QGuiApplication::desktopFileName();
}

// The process of all these windows; nothing if they have several, or there are none.
std::optional<qint64> onlyProcess(const QList<SwayTree::Window> &windows)
{
    if (windows.isEmpty())
        return std::nullopt;
    const qint64 first = windows.constFirst().process;
    const bool isOnly = std::all_of(windows.cbegin(), windows.cend(),
                                    [first](const SwayTree::Window &each) { return each.process == first; });
    return isOnly ? std::optional(first) : std::nullopt;
}

} // namespace

// A window as announced so far. The compositor sends changes in groups that end with "done".
struct WaylandToplevels::Toplevel
{
    WaylandToplevels *owner = nullptr;
    WaylandObject<zwlr_foreign_toplevel_handle_v1, zwlr_foreign_toplevel_handle_v1_destroy> handle;
    std::uint32_t identifier = 0;
    QString title;
    QString applicationIdentifier;
    std::uint32_t parent = 0;
    bool isActivated = false;
    bool isMinimised = false;
    bool isAnnounced = false; // completely, once
    // Decided once, since applications are told apart by it: the process, or 0 if it remains unknown.
    std::optional<qint64> process;
};

// The protocol's callbacks.
struct WaylandToplevels::Listener
{
    using Handle = zwlr_foreign_toplevel_handle_v1;
    using Manager = zwlr_foreign_toplevel_manager_v1;

    static Toplevel &of(void *data) { return *static_cast<Toplevel *>(data); }

    static void toplevel(void *data, Manager *, Handle *handle)
    {
        static_cast<WaylandToplevels *>(data)->add(handle);
    }
    static void finished(void *data, Manager *)
    {
        static_cast<WaylandToplevels *>(data)->m_manager = nullptr;
    }

    static void title(void *data, Handle *, const char *text)
    {
        of(data).title = Text::cleaned(QString::fromUtf8(text));
    }
    static void applicationIdentifier(void *data, Handle *, const char *text)
    {
        of(data).applicationIdentifier = QString::fromUtf8(text);
    }
    static void outputEnter(void *, Handle *, wl_output *) {}
    static void outputLeave(void *, Handle *, wl_output *) {}
    static void state(void *data, Handle *, wl_array *states)
    {
        Toplevel &toplevel = of(data);
        toplevel.isActivated = contains(states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED);
        toplevel.isMinimised = contains(states, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_MINIMIZED);
        if (toplevel.isActivated)
            toplevel.owner->remember(toplevel);
    }
    static void done(void *data, Handle *) { of(data).isAnnounced = true; }
    static void closed(void *data, Handle *) { of(data).owner->remove(&of(data)); }
    static void parent(void *data, Handle *, Handle *parent)
    {
        of(data).parent = parent ? of(zwlr_foreign_toplevel_handle_v1_get_user_data(parent)).identifier : 0;
    }

    static constexpr zwlr_foreign_toplevel_manager_v1_listener manager{&toplevel, &finished};
    static constexpr zwlr_foreign_toplevel_handle_v1_listener handle{
        &title, &applicationIdentifier, &outputEnter, &outputLeave, &state, &done, &closed, &parent};
};

bool WaylandToplevels::isOfferedBy(const WaylandConnection &connection)
{
    return connection.seat() && connection.offers(zwlr_foreign_toplevel_manager_v1_interface);
}

WaylandToplevels::WaylandToplevels(WaylandConnection &connection, ProgramsOf programsOf, Clock &clock)
    : m_connection(connection), m_programsOf(std::move(programsOf)), m_clock(clock),
      m_manager(connection.bind<zwlr_foreign_toplevel_manager_v1>(zwlr_foreign_toplevel_manager_v1_interface,
                                                                  managerVersion))
{
    zwlr_foreign_toplevel_manager_v1_add_listener(m_manager, &Listener::manager, this);
    m_connection.flush();
}

WaylandToplevels::~WaylandToplevels()
{
    m_toplevels.clear();
    if (m_manager)
        zwlr_foreign_toplevel_manager_v1_destroy(m_manager);
}

void WaylandToplevels::add(zwlr_foreign_toplevel_handle_v1 *handle)
{
    auto toplevel = std::make_unique<Toplevel>();
    toplevel->owner = this;
    toplevel->handle.reset(handle);
    toplevel->identifier = ++m_lastIdentifier;
    zwlr_foreign_toplevel_handle_v1_add_listener(handle, &Listener::handle, toplevel.get());
    m_toplevels.push_back(std::move(toplevel));
}

void WaylandToplevels::remove(const Toplevel *toplevel)
{
    m_recentlyActivated.removeAll(toplevel->identifier);
    std::erase_if(m_toplevels, [toplevel](const auto &each) { return each.get() == toplevel; });
}

void WaylandToplevels::remember(const Toplevel &toplevel)
{
    m_recentlyActivated.removeAll(toplevel.identifier);
    m_recentlyActivated.prepend(toplevel.identifier);
}

WaylandToplevels::Toplevel *WaylandToplevels::find(std::uint32_t identifier) const
{
    const auto found = std::find_if(m_toplevels.cbegin(), m_toplevels.cend(), [identifier](const auto &each) {
        return each->identifier == identifier;
    });
    return found == m_toplevels.cend() ? nullptr : found->get();
}

QList<std::uint32_t> WaylandToplevels::withUndecidedProcess() const
{
    QList<std::uint32_t> identifiers;
    for (const std::unique_ptr<Toplevel> &toplevel : m_toplevels) {
        if (toplevel->isAnnounced && !toplevel->process)
            identifiers.append(toplevel->identifier);
    }
    return identifiers;
}

// Repeated, since titles may change between the two reports. Windows that appear meanwhile wait for the next
// report, which contains them.
QCoro::Task<void> WaylandToplevels::learnProcessesFromSway()
{
    constexpr int attempts = 5;
    QList<std::uint32_t> undecided = withUndecidedProcess();
    for (int attempt = 0; attempt < attempts && m_isSway && !undecided.isEmpty(); ++attempt) {
        const auto windows = co_await SwayTree::windows(m_connection.compositorProcess());
        m_isSway = windows.has_value();
        for (const std::uint32_t identifier : undecided) {
            if (Toplevel *toplevel = find(identifier); toplevel && m_isSway)
                toplevel->process = processAmong(*windows, *toplevel);
        }
        undecided = withUndecidedProcess();
    }
}

QCoro::Task<void> WaylandToplevels::learnProcesses()
{
    co_await learnProcessesFromSway();
    const QList<std::uint32_t> undecided = withUndecidedProcess();
    for (const std::uint32_t identifier : undecided) {
        const Toplevel *toplevel = find(identifier);
        if (!toplevel)
            continue;
        const QString applicationIdentifier = toplevel->applicationIdentifier;
        const qint64 process = co_await processRunning(applicationIdentifier);
        if (Toplevel *decided = find(identifier))
            decided->process = process;
    }
}

// The only client of the compositor that runs the application's program; 0 if there is none, or several.
QCoro::Task<qint64> WaylandToplevels::processRunning(QString applicationIdentifier) const
{
    if (applicationIdentifier.isEmpty() || isOwn(applicationIdentifier))
        co_return 0;
    const QStringList programs = co_await m_programsOf(applicationIdentifier);
    const QList<qint64> processes = m_connection.clientsAmong(processesRunning(programs));
    co_return processes.size() == 1 ? processes.constFirst() : 0;
}

// An application's only process, or else that of the windows with this title, or of the one with the focus.
std::optional<qint64> WaylandToplevels::processAmong(QList<SwayTree::Window> windows,
                                                     const Toplevel &toplevel)
{
    using Window = SwayTree::Window;
    windows.removeIf([&toplevel](const Window &each) {
        return each.applicationIdentifier != toplevel.applicationIdentifier;
    });
    if (const auto process = onlyProcess(windows))
        return process;
    windows.removeIf([&toplevel](const Window &each) { return each.title != toplevel.title; });
    if (const auto process = onlyProcess(windows))
        return process;
    windows.removeIf([&toplevel](const Window &each) { return each.isFocused != toplevel.isActivated; });
    return onlyProcess(windows);
}

// If unknown, a negative number: one for each application identifier.
qint64 WaylandToplevels::processOf(const Toplevel &toplevel)
{
    if (toplevel.process.value_or(0) > 0)
        return *toplevel.process;
    const QString &applicationIdentifier = toplevel.applicationIdentifier;
    if (isOwn(applicationIdentifier))
        return QCoreApplication::applicationPid();
    return m_applications.of(applicationIdentifier);
}

DesktopWindow WaylandToplevels::described(const Toplevel &toplevel)
{
    DesktopWindow window;
    window.identifier = toplevel.identifier;
    window.process = processOf(toplevel);
    window.title = toplevel.title;
    window.className = toplevel.applicationIdentifier;
    window.applicationIdentifier = toplevel.applicationIdentifier;
    window.transientFor = toplevel.parent;
    window.kind = toplevel.parent ? DesktopWindow::Kind::Dialog : DesktopWindow::Kind::Application;
    window.isMinimised = toplevel.isMinimised;
    return window;
}

QCoro::Task<WindowSnapshot> WaylandToplevels::snapshot()
{
    co_await m_connection.roundTrip();
    co_await learnProcesses();
    WindowSnapshot snapshot;
    snapshot.recentlyActivated = m_recentlyActivated;
    snapshot.stacking = m_recentlyActivated;
    for (const std::unique_ptr<Toplevel> &toplevel : m_toplevels) {
        if (!toplevel->isAnnounced)
            continue;
        snapshot.windows.append(described(*toplevel));
        if (toplevel->isActivated)
            snapshot.activeWindow = toplevel->identifier;
        if (!snapshot.stacking.contains(toplevel->identifier))
            snapshot.stacking.append(toplevel->identifier);
    }
    co_return snapshot;
}

QCoro::Task<void> WaylandToplevels::bringForward(DesktopWindow window)
{
    const auto request = [this](std::uint32_t identifier) { return activate(identifier); };
    return Activation::bringForward(*this, m_clock, window, request);
}

QCoro::Task<void> WaylandToplevels::activate(std::uint32_t window)
{
    co_await m_connection.roundTrip();
    if (const Toplevel *toplevel = find(window))
        zwlr_foreign_toplevel_handle_v1_activate(toplevel->handle.get(), m_connection.seat());
    m_connection.flush();
}

QCoro::Task<void> WaylandToplevels::close(QList<DesktopWindow> windows)
{
    co_await m_connection.roundTrip();
    for (const DesktopWindow &window : windows) {
        if (const Toplevel *toplevel = find(window.identifier))
            zwlr_foreign_toplevel_handle_v1_close(toplevel->handle.get());
    }
    m_connection.flush();
}

QCoro::Task<QString> WaylandToplevels::startupIdentifier()
{
    // Compositors of this kind give new windows the focus anyway, and don't report it.
    co_return u"orvane-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++m_launches);
}
