// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/X11WindowStyler.h"

#include "Desktop/Linux/Window/RoundedArea.h"
#include "Desktop/Linux/Window/WindowPlacement.h"
#include "Desktop/Linux/Window/X11Summons.h"
#include "Desktop/Linux/X11/Selection.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QScreen>

#include <vector>

using namespace std::chrono_literals;

namespace {

// Timeout for the window manager to map the window.
constexpr int patience = 1500; // ms

QScreen *screenAt(const std::optional<QPoint> &pixel)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    QList<WindowPlacement::Screen> areas;
    for (const QScreen *screen : screens)
        areas.append({screen->geometry(), screen->devicePixelRatio()});
    const auto found = pixel ? WindowPlacement::screenAt(*pixel, areas) : std::nullopt;
    return found ? screens[*found] : QGuiApplication::primaryScreen();
}

void centre(QWindow &window, const QScreen *screen)
{
    if (screen)
        window.setPosition(WindowPlacement::centred(window.size(), screen->availableGeometry()));
}

} // namespace

X11WindowStyler::X11WindowStyler(X11Display &display, Clock &clock)
    : m_display(display),
      m_clock(clock), m_atoms{display.connection().atoms()._NET_WM_WINDOW_TYPE,
                              display.connection().atoms()._NET_WM_WINDOW_TYPE_NORMAL,
                              display.connection().internAtom("_KDE_NET_WM_BLUR_BEHIND_REGION")}
{
    followCompositor();
}

void X11WindowStyler::followCompositor()
{
    const std::function<void(xcb_window_t)> ownerChanged = [this](xcb_window_t owner) {
        setCompositing(owner != XCB_NONE);
    };
    const auto selection =
        std::make_shared<X11Selection>(m_display.connection(), "_NET_WM_CM_S", m_calls.wrap(ownerChanged));
    m_display.post([selection, connection = &m_display.connection()] {
        connection->addEventHandler(
            [selection](const xcb_generic_event_t &event) { selection->handle(event); });
        selection->follow();
    });
}

void X11WindowStyler::style(QWindow &window)
{
    window.setFlag(Qt::FramelessWindowHint);
    QSurfaceFormat format = window.requestedFormat();
    format.setAlphaBufferSize(8);
    window.setFormat(format);
    window.installEventFilter(this);
    if (window.handle())
        setHints(window);
    else
        window.create();
}

bool X11WindowStyler::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PlatformSurface) {
        const auto *surface = static_cast<QPlatformSurfaceEvent *>(event);
        const auto *window = qobject_cast<QWindow *>(watched);
        if (window && surface->surfaceEventType() == QPlatformSurfaceEvent::SurfaceCreated)
            setHints(*window);
    } else if (event->type() == QEvent::Resize) {
        const auto *window = qobject_cast<QWindow *>(watched);
        if (window && window->handle())
            setBlurredArea(*window);
    }
    return WindowStyler::eventFilter(watched, event);
}

void X11WindowStyler::setHints(const QWindow &window) const
{
    const auto *application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!application)
        return;
    xcb_connection_t *x = application->connection();
    const auto identifier = xcb_window_t(window.winId());
    // Qt gives frameless windows the type _KDE_NET_WM_WINDOW_TYPE_OVERRIDE, which some task bars omit.
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, identifier, m_atoms.windowType, XCB_ATOM_ATOM, 32, 1,
                        &m_atoms.normalWindow);
    setBlurredArea(window);
}

// Sets the region that a capable compositor blurs behind the window, without the rounded corners.
void X11WindowStyler::setBlurredArea(const QWindow &window) const
{
    const auto *application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!application)
        return;
    const qreal ratio = window.devicePixelRatio();
    const int radius = qRound(window.property(cornerRadiusProperty).toInt() * ratio);
    std::vector<std::uint32_t> numbers;
    for (const QRect &part : RoundedArea::rectangles((QSizeF(window.size()) * ratio).toSize(), radius)) {
        for (const int number : {part.x(), part.y(), part.width(), part.height()})
            numbers.push_back(static_cast<std::uint32_t>(number));
    }
    xcb_connection_t *x = application->connection();
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, xcb_window_t(window.winId()), m_atoms.blurBehind,
                        XCB_ATOM_CARDINAL, 32, std::uint32_t(numbers.size()), numbers.data());
    xcb_flush(x);
}

void X11WindowStyler::bringForward(QWindow &window, const QString &activationToken)
{
    m_summoning = summon(&window, activationToken);
}

QCoro::Task<void> X11WindowStyler::summon(QPointer<QWindow> window, QString activationToken)
{
    const QPointer<X11WindowStyler> self(this);
    const int summons = ++m_summons;
    const std::optional<QPoint> pixel = co_await pointer();
    if (!self || !window || summons != m_summons)
        co_return;
    const QPointer<QScreen> screen(screenAt(pixel));
    // A hidden window's EWMH properties are stale, so wait until it is exposed; one on another workspace
    // never is.
    const Wanted wanted = window->isVisible() ? Wanted::Managed : Wanted::ManagedAndMapped;
    centre(*window, screen);
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->show();
    window->raise();

    const std::optional<DesktopWindow> ours = co_await managed(window, wanted);
    if (!self || !window || summons != m_summons || !window->isVisible())
        co_return;
    // The window manager may have placed the new window elsewhere.
    centre(*window, screen);
    if (ours)
        co_await activate(*ours, activationToken);
    else
        window->requestActivate();
}

QCoro::Task<std::optional<QPoint>> X11WindowStyler::pointer()
{
    auto ask = [connection = &m_display.connection()] { return X11Summons::pointerPosition(*connection); };
    try {
        co_return co_await m_display.run(std::move(ask));
    } catch (const PlatformError &) {
        // Fall back to the primary screen.
        co_return std::nullopt;
    }
}

// Waits until the window manager manages the window. Nothing on timeout, or without a window manager.
QCoro::Task<std::optional<DesktopWindow>> X11WindowStyler::managed(QPointer<QWindow> window, Wanted wanted)
{
    const QPointer<X11WindowStyler> self(this);
    QElapsedTimer elapsed;
    elapsed.start();
    while (self && window && window->isVisible() && !elapsed.hasExpired(patience)) {
        const auto identifier = std::uint32_t(window->winId());
        WindowSnapshot snapshot;
        try {
            snapshot = co_await m_display.snapshot();
        } catch (const PlatformError &) {
            // The X server doesn't respond: don't wait.
            co_return std::nullopt;
        }
        const DesktopWindow *found = snapshot.find(identifier);
        if (found && window && (wanted == Wanted::Managed || window->isExposed()))
            co_return *found;
        if (self)
            co_await m_clock.sleep(5ms);
    }
    co_return std::nullopt;
}

QCoro::Task<void> X11WindowStyler::activate(DesktopWindow window, QString activationToken)
{
    const QPointer<X11WindowStyler> self(this);
    const QByteArray token = activationToken.toUtf8();
    auto prepare = [connection = &m_display.connection(), identifier = window.identifier, token] {
        X11Summons::moveToCurrentDesktop(*connection, identifier);
        if (!token.isEmpty())
            X11Summons::endLaunchFeedback(*connection, token);
    };
    try {
        co_await m_display.run(std::move(prepare));
        if (self)
            co_await m_display.bringForward(window);
    } catch (const PlatformError &) {
        // If the window manager refuses, leave the window as it is.
        co_return;
    }
}
