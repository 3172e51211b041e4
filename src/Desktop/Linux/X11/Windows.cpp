// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Windows.h"

#include "Base/Text.h"
#include "Desktop/Linux/Processes/ProcessSandbox.h"
#include "Desktop/Linux/X11/Ewmh.h"
#include "Desktop/Linux/X11/Grabs.h"

#include <QRegularExpression>

#include <algorithm>
#include <span>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestHistory = 64;

// Decodes COMPOUND_TEXT: Latin-1 with escape sequences that switch character sets, including to UTF-8.
QString fromCompoundText(const QByteArray &bytes)
{
    static const QRegularExpression unicode(u"\x1b%G(.*?)(?:\x1b%@|$)"_s);
    static const QRegularExpression escapes(u"\x1b[ -/]*[0-~]"_s);
    QString text = QString::fromLatin1(bytes);
    for (auto match = unicode.match(text); match.hasMatch(); match = unicode.match(text))
        text.replace(match.capturedStart(), match.capturedLength(),
                     QString::fromUtf8(match.captured(1).toLatin1()));
    return text.remove(escapes);
}

// The two strings of WM_CLASS.
struct WindowClass
{
    QString instance;
    QString name;
};

WindowClass classOf(const std::optional<X11Property> &property)
{
    const QList<QByteArray> parts = property ? property->bytes.split('\0') : QList<QByteArray>();
    return {QString::fromLatin1(parts.value(0)), QString::fromLatin1(parts.value(1))};
}

} // namespace

// The pending property requests for one window.
struct X11Windows::Requests
{
    std::uint32_t window;
    xcb_get_property_cookie_t title, oldTitle, wmClass, type, state, desktop, transientFor, protocols,
        startupIdentifier, gtkApplication, desktopFile;
};

X11Windows::X11Windows(X11Connection &connection) : m_connection(connection)
{
    m_connection.onRootChange = [this](xcb_atom_t property) {
        if (property == m_connection.atoms()._NET_ACTIVE_WINDOW)
            remember(activeWindow());
    };
    remember(activeWindow());
}

void X11Windows::remember(std::optional<std::uint32_t> window)
{
    if (!window)
        return;
    m_recentlyActivated.removeAll(*window);
    m_recentlyActivated.prepend(*window);
    if (m_recentlyActivated.size() > longestHistory)
        m_recentlyActivated.removeLast();
}

void X11Windows::drainEvents()
{
    m_connection.drainEvents();
}

QList<std::uint32_t> X11Windows::rootValues(xcb_atom_t property) const
{
    const auto answer = m_connection.property(m_connection.root(), property);
    return answer ? answer->values() : QList<std::uint32_t>();
}

std::optional<std::uint32_t> X11Windows::activeWindow() const
{
    const QList<std::uint32_t> values = rootValues(m_connection.atoms()._NET_ACTIVE_WINDOW);
    if (values.isEmpty() || values.first() == XCB_NONE)
        return std::nullopt;
    return values.first();
}

WindowSnapshot X11Windows::snapshot()
{
    m_connection.requireAlive();
    drainEvents();
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    WindowSnapshot result;
    result.activeWindow = activeWindow();
    remember(result.activeWindow);
    result.recentlyActivated = m_recentlyActivated;
    result.stacking = rootValues(atoms._NET_CLIENT_LIST_STACKING);
    std::reverse(result.stacking.begin(), result.stacking.end());
    const QList<std::uint32_t> desktops = rootValues(atoms._NET_CURRENT_DESKTOP);
    const std::uint32_t desktop = desktops.value(0, 0);

    QList<Requests> requests;
    const QList<std::uint32_t> clients = rootValues(atoms._NET_CLIENT_LIST);
    for (const std::uint32_t window : clients)
        requests.append(requestsFor(window));
    const QList<qint64> processes = m_clients.processes(clients);
    for (qsizetype i = 0; i < requests.size(); ++i) {
        if (auto window = described(requests.at(i), desktop)) {
            window->process = processes.at(i);
            result.windows.append(std::move(*window));
        }
    }
    addSandboxes(result);
    addToStacking(result);
    m_connection.requireAlive();
    return result;
}

// A window manager may list and activate a new window before updating the stacking order: assume it is on
// top.
void X11Windows::addToStacking(WindowSnapshot &snapshot)
{
    for (const DesktopWindow &window : std::as_const(snapshot.windows)) {
        if (!snapshot.stacking.contains(window.identifier))
            snapshot.stacking.prepend(window.identifier);
    }
}

X11Windows::Requests X11Windows::requestsFor(std::uint32_t window) const
{
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    const auto request = [this, window](xcb_atom_t property) {
        return m_connection.request(window, property);
    };
    return {.window = window,
            .title = request(atoms._NET_WM_NAME),
            .oldTitle = request(XCB_ATOM_WM_NAME),
            .wmClass = request(XCB_ATOM_WM_CLASS),
            .type = request(atoms._NET_WM_WINDOW_TYPE),
            .state = request(atoms._NET_WM_STATE),
            .desktop = request(atoms._NET_WM_DESKTOP),
            .transientFor = request(XCB_ATOM_WM_TRANSIENT_FOR),
            .protocols = request(atoms.WM_PROTOCOLS),
            .startupIdentifier = request(m_connection.startupIdentifierAtom()),
            .gtkApplication = request(m_connection.gtkApplicationAtom()),
            .desktopFile = request(m_connection.desktopFileAtom())};
}

QString X11Windows::textOf(const std::optional<X11Property> &property) const
{
    if (!property)
        return QString();
    const bool isUnicode = property->type == m_connection.atoms().UTF8_STRING;
    const QString text = isUnicode ? QString::fromUtf8(property->bytes) : fromCompoundText(property->bytes);
    return Text::cleaned(text);
}

// KDE applications may give the entry's path instead of its id.
QString X11Windows::applicationIdentifier(const Requests &requests) const
{
    const QString gtk = textOf(m_connection.read(requests.gtkApplication));
    const QString file = textOf(m_connection.read(requests.desktopFile));
    const QString name = gtk.isEmpty() ? file.section(u'/', -1) : gtk;
    const QLatin1StringView suffix(".desktop");
    return name.endsWith(suffix) ? name.chopped(suffix.size()) : name;
}

void X11Windows::addSandboxes(WindowSnapshot &snapshot)
{
    QHash<qint64, QString> known;
    for (DesktopWindow &window : snapshot.windows) {
        if (window.process > 0 && !known.contains(window.process)) {
            const auto sandbox = ProcessSandbox::of(window.process);
            known.insert(window.process, sandbox ? sandbox->application : QString());
        }
        window.sandbox = known.value(window.process);
    }
}

std::optional<DesktopWindow> X11Windows::described(const Requests &requests,
                                                   std::uint32_t currentDesktop) const
{
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    const auto values = [this](xcb_get_property_cookie_t cookie) {
        const auto property = m_connection.read(cookie);
        return property ? property->values() : QList<std::uint32_t>();
    };
    DesktopWindow window;
    window.identifier = requests.window;
    const auto title = m_connection.read(requests.title);
    const auto oldTitle = m_connection.read(requests.oldTitle);
    window.title = textOf(title ? title : oldTitle);
    const auto wmClass = m_connection.read(requests.wmClass);
    const WindowClass both = classOf(wmClass);
    window.instance = both.instance;
    window.className = both.name;
    const QList<std::uint32_t> types = values(requests.type);
    const QList<std::uint32_t> states = values(requests.state);
    const QList<std::uint32_t> desktops = values(requests.desktop);
    window.transientFor = values(requests.transientFor).value(0, XCB_NONE);
    window.kind = kindOf(types, window.transientFor != XCB_NONE);
    window.isModal = states.contains(atoms._NET_WM_STATE_MODAL);
    window.isMinimised = states.contains(atoms._NET_WM_STATE_HIDDEN);
    window.belongsInTaskBar = window.isOrdinary() && !states.contains(atoms._NET_WM_STATE_SKIP_TASKBAR);
    window.isOnCurrentDesktop =
        desktops.isEmpty() || desktops.first() == currentDesktop || desktops.first() == Ewmh::everyDesktop;
    const QList<std::uint32_t> protocols = values(requests.protocols);
    window.canBeClosed = protocols.contains(m_connection.deleteWindowAtom());
    window.answersPings = protocols.contains(atoms._NET_WM_PING);
    window.startupIdentifier = textOf(m_connection.read(requests.startupIdentifier));
    window.applicationIdentifier = applicationIdentifier(requests);
    // A window destroyed in the meantime has no properties.
    const bool hasVanished = !title && !oldTitle && !wmClass && desktops.isEmpty();
    return hasVanished ? std::nullopt : std::optional(window);
}

DesktopWindow::Kind X11Windows::kindOf(const QList<std::uint32_t> &types, bool isTransient) const
{
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    // Types are listed in order of preference; the first known one counts.
    for (const std::uint32_t type : types) {
        if (type == atoms._NET_WM_WINDOW_TYPE_NORMAL)
            return DesktopWindow::Kind::Application;
        if (type == atoms._NET_WM_WINDOW_TYPE_DIALOG || type == atoms._NET_WM_WINDOW_TYPE_UTILITY)
            return DesktopWindow::Kind::Dialog;
        const QList<xcb_atom_t> shell{
            atoms._NET_WM_WINDOW_TYPE_DESKTOP,    atoms._NET_WM_WINDOW_TYPE_DOCK,
            atoms._NET_WM_WINDOW_TYPE_TOOLBAR,    atoms._NET_WM_WINDOW_TYPE_MENU,
            atoms._NET_WM_WINDOW_TYPE_SPLASH,     atoms._NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
            atoms._NET_WM_WINDOW_TYPE_POPUP_MENU, atoms._NET_WM_WINDOW_TYPE_TOOLTIP,
            atoms._NET_WM_WINDOW_TYPE_COMBO,      atoms._NET_WM_WINDOW_TYPE_NOTIFICATION,
            atoms._NET_WM_WINDOW_TYPE_DND};
        if (shell.contains(type))
            return DesktopWindow::Kind::Shell;
    }
    return isTransient ? DesktopWindow::Kind::Dialog : DesktopWindow::Kind::Application;
}

// A crashed window manager leaves the property on the root window, but not the window it refers to.
std::optional<QString> X11Windows::windowManager() const
{
    const auto &atoms = m_connection.atoms();
    const auto namedBy = [&](xcb_window_t window) {
        const auto mark = m_connection.property(window, atoms._NET_SUPPORTING_WM_CHECK);
        return mark ? mark->values().value(0, XCB_NONE) : std::uint32_t(XCB_NONE);
    };
    const xcb_window_t window = namedBy(m_connection.root());
    if (window == XCB_NONE || namedBy(window) != window)
        return std::nullopt;
    const auto name = m_connection.property(window, atoms._NET_WM_NAME);
    return name ? QString::fromUtf8(name->bytes) : QString();
}

bool X11Windows::isActive(const DesktopWindow &window) const
{
    const std::optional<std::uint32_t> active = activeWindow();
    if (!active || *active == window.identifier)
        return active.has_value();
    const bool isSameProcess = belongToSameClient(*active, window.identifier) ||
                               m_clients.processes({*active}).constFirst() == window.process;
    return isSameProcess && isOfSamePart(*active, window);
}

// Applications that share a process differ in WM_CLASS, but their dialogs may not have it.
bool X11Windows::isOfSamePart(std::uint32_t active, const DesktopWindow &window) const
{
    if (m_connection.property(active, XCB_ATOM_WM_TRANSIENT_FOR))
        return true;
    const WindowClass other = classOf(m_connection.property(active, XCB_ATOM_WM_CLASS));
    return other.instance == window.instance && other.name == window.className;
}

bool X11Windows::hasKeys(const DesktopWindow &window) const
{
    m_connection.requireAlive();
    if (!isActive(window))
        return false;
    // The property may change before the input focus does. The focus may be on an unmanaged window of the
    // application.
    const auto cookie = xcb_get_input_focus(m_connection.get());
    const X11Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr));
    return focus && belongToSameClient(focus->focus, window.identifier);
}

bool X11Windows::belongToSameClient(std::uint32_t one, std::uint32_t other) const
{
    return m_clients.clientOf(one) == m_clients.clientOf(other);
}

bool X11Windows::isKeyboardGrabbedFrom(const DesktopWindow &window) const
{
    return X11Grabs::isKeyboardTaken(m_connection) && !hasOpenMenu(window);
}

// Menus are override-redirect windows.
bool X11Windows::hasOpenMenu(const DesktopWindow &window) const
{
    xcb_connection_t *const connection = m_connection.get();
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, m_connection.root()), nullptr));
    if (!tree)
        return false;
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<size_t>(xcb_query_tree_children_length(tree.get())));
    return std::ranges::any_of(children, [&](xcb_window_t child) {
        if (!belongToSameClient(child, window.identifier))
            return false;
        const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            connection, xcb_get_window_attributes(connection, child), nullptr));
        return attributes && attributes->override_redirect && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    });
}

void X11Windows::requestActivation(std::uint32_t window)
{
    m_connection.requireAlive();
    const xcb_timestamp_t time = m_connection.serverTime();
    const std::uint32_t active = activeWindow().value_or(XCB_NONE);
    m_connection.sendToManager(window, m_connection.atoms()._NET_ACTIVE_WINDOW,
                               {Ewmh::requestedByUserTool, time, active});
}

void X11Windows::requestClose(std::uint32_t window)
{
    m_connection.requireAlive();
    m_connection.sendToManager(window, m_connection.atoms()._NET_CLOSE_WINDOW,
                               {m_connection.serverTime(), Ewmh::requestedByUserTool});
}
