// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11Windows.h"

#include "Base/Text.h"
#include "Desktop/Linux/X11Grabs.h"

#include <QRegularExpression>

#include <algorithm>
#include <span>

namespace {

constexpr qsizetype longestHistory = 64;
constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;
constexpr std::uint32_t requestedByUserTool = 2; // the source indication that focus protection lets through

// Text in X's own compound encoding: Latin-1 with escape sequences that switch character sets, and UTF-8
// between two of them.
QString fromCompoundText(const QByteArray &bytes)
{
    static const QRegularExpression unicode(QStringLiteral("\x1b%G(.*?)(?:\x1b%@|$)"));
    static const QRegularExpression escapes(QStringLiteral("\x1b[ -/]*[0-~]"));
    QString text = QString::fromLatin1(bytes);
    for (auto match = unicode.match(text); match.hasMatch(); match = unicode.match(text))
        text.replace(match.capturedStart(), match.capturedLength(),
                     QString::fromUtf8(match.captured(1).toLatin1()));
    return text.remove(escapes);
}

} // namespace

// Everything that is asked about one window.
struct X11Windows::Requests
{
    std::uint32_t window;
    xcb_get_property_cookie_t process, title, oldTitle, wmClass, type, state, desktop, transientFor,
        protocols, startupIdentifier;
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

X11Snapshot X11Windows::snapshot()
{
    m_connection.requireAlive();
    drainEvents();
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    X11Snapshot result;
    result.activeWindow = activeWindow();
    remember(result.activeWindow);
    result.recentlyActivated = m_recentlyActivated;
    result.stacking = rootValues(atoms._NET_CLIENT_LIST_STACKING);
    std::reverse(result.stacking.begin(), result.stacking.end());
    const QList<std::uint32_t> desktops = rootValues(atoms._NET_CURRENT_DESKTOP);
    const std::uint32_t desktop = desktops.value(0, 0);

    QList<Requests> requests;
    for (const std::uint32_t window : rootValues(atoms._NET_CLIENT_LIST))
        requests.append(requestsFor(window));
    for (const Requests &each : requests) {
        if (auto window = described(each, desktop))
            result.windows.append(std::move(*window));
    }
    addToStacking(result);
    m_connection.requireAlive();
    return result;
}

// A window manager may list a new window, and make it active, before it tells where it lies: on top.
void X11Windows::addToStacking(X11Snapshot &snapshot)
{
    for (const X11Window &window : std::as_const(snapshot.windows)) {
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
            .process = request(atoms._NET_WM_PID),
            .title = request(atoms._NET_WM_NAME),
            .oldTitle = request(XCB_ATOM_WM_NAME),
            .wmClass = request(XCB_ATOM_WM_CLASS),
            .type = request(atoms._NET_WM_WINDOW_TYPE),
            .state = request(atoms._NET_WM_STATE),
            .desktop = request(atoms._NET_WM_DESKTOP),
            .transientFor = request(XCB_ATOM_WM_TRANSIENT_FOR),
            .protocols = request(atoms.WM_PROTOCOLS),
            .startupIdentifier = request(m_connection.startupIdentifierAtom())};
}

QString X11Windows::textOf(const std::optional<X11Property> &property) const
{
    if (!property)
        return QString();
    const bool isUnicode = property->type == m_connection.atoms().UTF8_STRING;
    const QString text = isUnicode ? QString::fromUtf8(property->bytes) : fromCompoundText(property->bytes);
    return Text::cleaned(text);
}

std::optional<X11Window> X11Windows::described(const Requests &requests, std::uint32_t currentDesktop) const
{
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    const auto values = [this](xcb_get_property_cookie_t cookie) {
        const auto property = m_connection.read(cookie);
        return property ? property->values() : QList<std::uint32_t>();
    };
    X11Window window;
    window.identifier = requests.window;
    window.process = values(requests.process).value(0, 0);
    if (window.process <= 0)
        window.process = -qint64(requests.window);
    const auto title = m_connection.read(requests.title);
    const auto oldTitle = m_connection.read(requests.oldTitle);
    window.title = textOf(title ? title : oldTitle);
    const auto wmClass = m_connection.read(requests.wmClass);
    const QList<QByteArray> classes = wmClass ? wmClass->bytes.split('\0') : QList<QByteArray>();
    window.instance = QString::fromLatin1(classes.value(0));
    window.className = QString::fromLatin1(classes.value(1));
    const QList<std::uint32_t> types = values(requests.type);
    const QList<std::uint32_t> states = values(requests.state);
    const QList<std::uint32_t> desktops = values(requests.desktop);
    window.kind = kindOf(types, values(requests.transientFor).value(0, XCB_NONE) != XCB_NONE);
    window.isMinimised = states.contains(atoms._NET_WM_STATE_HIDDEN);
    window.belongsInTaskBar = window.isOrdinary() && !states.contains(atoms._NET_WM_STATE_SKIP_TASKBAR);
    window.isOnCurrentDesktop =
        desktops.isEmpty() || desktops.first() == currentDesktop || desktops.first() == everyDesktop;
    const QList<std::uint32_t> protocols = values(requests.protocols);
    window.canBeClosed = protocols.contains(m_connection.deleteWindowAtom());
    window.answersPings = protocols.contains(atoms._NET_WM_PING);
    window.startupIdentifier = textOf(m_connection.read(requests.startupIdentifier));
    // A window that has vanished in the meantime tells nothing at all.
    const bool hasVanished = !title && !oldTitle && !wmClass && desktops.isEmpty();
    return hasVanished ? std::nullopt : std::optional(window);
}

X11Window::Kind X11Windows::kindOf(const QList<std::uint32_t> &types, bool isTransient) const
{
    const xcb_ewmh_connection_t &atoms = m_connection.atoms();
    // An application gives its types by preference; the first one that is known counts.
    for (const std::uint32_t type : types) {
        if (type == atoms._NET_WM_WINDOW_TYPE_NORMAL)
            return X11Window::Kind::Application;
        if (type == atoms._NET_WM_WINDOW_TYPE_DIALOG || type == atoms._NET_WM_WINDOW_TYPE_UTILITY)
            return X11Window::Kind::Dialog;
        const QList<xcb_atom_t> shell{
            atoms._NET_WM_WINDOW_TYPE_DESKTOP,    atoms._NET_WM_WINDOW_TYPE_DOCK,
            atoms._NET_WM_WINDOW_TYPE_TOOLBAR,    atoms._NET_WM_WINDOW_TYPE_MENU,
            atoms._NET_WM_WINDOW_TYPE_SPLASH,     atoms._NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
            atoms._NET_WM_WINDOW_TYPE_POPUP_MENU, atoms._NET_WM_WINDOW_TYPE_TOOLTIP,
            atoms._NET_WM_WINDOW_TYPE_COMBO,      atoms._NET_WM_WINDOW_TYPE_NOTIFICATION,
            atoms._NET_WM_WINDOW_TYPE_DND};
        if (shell.contains(type))
            return X11Window::Kind::Shell;
    }
    return isTransient ? X11Window::Kind::Dialog : X11Window::Kind::Application;
}

// A manager that has died leaves its mark on the root window behind, but not the window that it names.
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

bool X11Windows::isActive(const X11Window &window) const
{
    const std::optional<std::uint32_t> active = activeWindow();
    if (!active || *active == window.identifier)
        return active.has_value();
    const auto process = m_connection.property(*active, m_connection.atoms()._NET_WM_PID);
    return process && qint64(process->values().value(0, 0)) == window.process;
}

bool X11Windows::hasKeys(const X11Window &window) const
{
    m_connection.requireAlive();
    if (!isActive(window))
        return false;
    // The window manager may tell the change before the keys follow. The focus can lie on a window of the
    // application that is not managed.
    const auto cookie = xcb_get_input_focus(m_connection.get());
    const X11Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_connection.get(), cookie, nullptr));
    return focus && belongToSameClient(focus->focus, window.identifier);
}

// All that one client has made share the upper bits of their identifiers.
bool X11Windows::belongToSameClient(std::uint32_t one, std::uint32_t other) const
{
    const std::uint32_t client = ~xcb_get_setup(m_connection.get())->resource_id_mask;
    return (one & client) == (other & client);
}

bool X11Windows::isKeyboardGrabbedFrom(const X11Window &window) const
{
    return X11Grabs::isKeyboardTaken(m_connection) && !hasOpenMenu(window);
}

// Menus are windows that window managers leave alone.
bool X11Windows::hasOpenMenu(const X11Window &window) const
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
                               {requestedByUserTool, time, active});
}

void X11Windows::requestClose(std::uint32_t window)
{
    m_connection.requireAlive();
    m_connection.sendToManager(window, m_connection.atoms()._NET_CLOSE_WINDOW,
                               {m_connection.serverTime(), requestedByUserTool});
}
