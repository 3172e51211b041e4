// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/DisplayServices.h"

#include "Desktop/Linux/Diagnosis/BusExamination.h"
#include "Desktop/Linux/LinuxScreenCapture.h"
#include "Desktop/Linux/Pasting/AccessedText.h"
#include "Desktop/Linux/Portals/PortalClipboardText.h"
#include "Desktop/Linux/Portals/PortalScreenCapture.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/ShellExtension/ExtensionFiles.h"
#include "Desktop/Linux/ShellExtension/ExtensionStanding.h"
#include "Desktop/Linux/ShellExtension/ShellKeyboard.h"
#include "Desktop/Linux/ShellExtension/ShellWindows.h"
#include "Desktop/Linux/Typing/LinuxKeyboard.h"
#include "Desktop/Linux/Wayland/Clipboard.h"
#include "Desktop/Linux/Wayland/Compositor.h"
#include "Desktop/Linux/Wayland/Keyboard.h"
#include "Desktop/Linux/Wayland/PlasmaKeyboard.h"
#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/Linux/X11/Clipboard.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/PlatformError.h"

#include <future>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

class X11Services : public DisplayServices
{
public:
    X11Services(Clock &clock, const DisplayEnvironment &environment, const std::optional<QString> &obstacle)
        : m_obstacle(obstacle), m_display(clock, obstacle), m_keyboard(m_display, environment.frontmostWindow)
    {
    }

    std::optional<QString> obstacle() const override { return m_obstacle; }
    WindowSystem &windows() override { return m_display; }
    ReceiverKeyboard &keyboard() override { return m_keyboard; }
    ScreenCapture &screenCapture() override { return m_screenCapture; }
    ClipboardText &clipboard() override { return m_clipboard; }
    X11Display *x11() override { return &m_display; }

private:
    const std::optional<QString> m_obstacle;
    X11Display m_display;
    LinuxKeyboard m_keyboard;
    LinuxScreenCapture m_screenCapture{m_display};
    X11Clipboard m_clipboard{m_obstacle};
};

std::unique_ptr<WindowSystem> windowsOf(WaylandConnection &connection, const WaylandOffer &offer,
                                        const DisplayEnvironment &environment, Clock &clock)
{
    if (offer.windows == WaylandOffer::Windows::Plasma)
        return std::make_unique<PlasmaWindows>(connection, clock);
    return std::make_unique<WaylandToplevels>(connection, environment.programsOf, clock);
}

std::unique_ptr<ReceiverKeyboard> keyboardOf(WaylandConnection &connection, const WaylandOffer &offer,
                                             WindowSystem &windows, const DisplayEnvironment &environment,
                                             Clock &clock)
{
    if (offer.keys == WaylandOffer::Keys::Plasma)
        return std::make_unique<PlasmaKeyboard>(connection, windows, environment.frontmostWindow,
                                                environment.isTerminal, clock);
    return std::make_unique<WaylandKeyboard>(connection, windows, environment.frontmostWindow,
                                             environment.takesEveryCharacter, clock);
}

std::unique_ptr<ScreenCapture> screenCaptureOf(const WaylandOffer &offer, PortalBus &portals)
{
    if (offer.pictures)
        return std::make_unique<WaylandScreenCapture>();
    return std::make_unique<PortalScreenCapture>(portals);
}

std::unique_ptr<ClipboardAccess> clipboardOf(WaylandConnection &connection)
{
    if (!WaylandClipboard::isOfferedBy(connection))
        return nullptr;
    return std::make_unique<WaylandClipboard>(connection);
}

class WaylandServices : public DisplayServices
{
public:
    WaylandServices(std::unique_ptr<WaylandConnection> connection, Clock &clock,
                    const DisplayEnvironment &environment)
        : m_connection(std::move(connection)), m_offer(WaylandOffer::of(*m_connection)),
          m_windows(windowsOf(*m_connection, m_offer, environment, clock)),
          m_keyboard(keyboardOf(*m_connection, m_offer, *m_windows, environment, clock)),
          m_screenCapture(screenCaptureOf(m_offer, m_portals))
    {
    }

    std::optional<QString> obstacle() const override { return m_connection->loss(); }
    WindowSystem &windows() override { return *m_windows; }
    ReceiverKeyboard &keyboard() override { return *m_keyboard; }
    ScreenCapture &screenCapture() override { return *m_screenCapture; }
    ClipboardText &clipboard() override { return m_clipboard; }

private:
    std::unique_ptr<WaylandConnection> m_connection;
    WaylandOffer m_offer;
    PortalBus m_portals;
    std::unique_ptr<WindowSystem> m_windows;
    std::unique_ptr<ReceiverKeyboard> m_keyboard;
    std::unique_ptr<ScreenCapture> m_screenCapture;
    AccessedText m_clipboard{[this] { return clipboardOf(*m_connection); }};
};

class ShellExtensionServices : public DisplayServices
{
public:
    ShellExtensionServices(std::unique_ptr<WaylandConnection> connection, Clock &clock,
                           const DisplayEnvironment &environment)
        : m_connection(std::move(connection)), m_windows(m_extension, clock),
          m_keyboard(m_extension, m_portals, *m_connection, m_windows, environment.frontmostWindow,
                     environment.isTerminal, clock)
    {
    }

    WindowSystem &windows() override { return m_windows; }
    ReceiverKeyboard &keyboard() override { return m_keyboard; }
    ScreenCapture &screenCapture() override { return m_screenCapture; }
    ClipboardText &clipboard() override { return m_clipboard; }

private:
    std::unique_ptr<WaylandConnection> m_connection;
    ShellExtension m_extension;
    PortalBus m_portals;
    ShellWindows m_windows;
    ShellKeyboard m_keyboard;
    PortalScreenCapture m_screenCapture{m_portals};
    PortalClipboardText m_clipboard{m_portals};
};

// The services on the session bus; none if it doesn't answer within two seconds.
BusExamination sessionBus()
{
    std::promise<BusExamination> promise;
    std::future<BusExamination> examination = promise.get_future();
    // A hung bus keeps the thread for ever.
    std::thread([promise = std::move(promise)]() mutable {
        try {
            promise.set_value(BusExamination::take(BusExamination::sessionBusAddress()));
        } catch (const PlatformError &) {
            promise.set_value({});
        }
    }).detach();
    const bool isTaken = examination.wait_for(Deadlines::answer) == std::future_status::ready;
    return isTaken ? examination.get() : BusExamination();
}

// What makes the windows of this session accessible.
struct Ways
{
    SessionType session = SessionType::None;
    std::unique_ptr<WaylandConnection> compositor; // if there is a way
    bool isExtensionNeeded = false;                // it runs; without it the compositor offers too little
    std::optional<QString> obstacle;               // set if there is no way
};

std::optional<QString> obstacleIn(SessionType session, const BusExamination &bus)
{
    if (bus.isRunning(u"org.gnome.Shell"_s))
        return obstacleOf(extensionStanding(bus.extensionVersion, ExtensionFiles::areCurrent()));
    return Sessions::obstacle(session);
}

Ways findWays()
{
    Ways ways;
    ways.session = Sessions::typeWith(Sessions::displayServer());
    if (ways.session != SessionType::Wayland)
        return ways;
    std::unique_ptr<WaylandConnection> compositor = connectToCompositor();
    const WaylandOffer offer = compositor ? WaylandOffer::of(*compositor) : WaylandOffer();
    if (offer.isComplete()) {
        ways.compositor = std::move(compositor);
        return ways;
    }
    if (offer.isWithheld) {
        ways.obstacle = u"This desktop lets only programs that it knows see and operate it: run “orvane "
                        "integrate” in a terminal, then start Orvane again."_s;
        return ways;
    }
    const BusExamination bus = sessionBus();
    ways.obstacle = compositor ? obstacleIn(ways.session, bus) : Sessions::obstacle(ways.session);
    if (!ways.obstacle) {
        ways.compositor = std::move(compositor);
        ways.isExtensionNeeded = true;
    }
    return ways;
}

} // namespace

std::unique_ptr<DisplayServices> DisplayServices::connect(Clock &clock, const DisplayEnvironment &environment)
{
    Ways ways = findWays();
    if (ways.isExtensionNeeded)
        return std::make_unique<ShellExtensionServices>(std::move(ways.compositor), clock, environment);
    if (ways.compositor)
        return std::make_unique<WaylandServices>(std::move(ways.compositor), clock, environment);
    return std::make_unique<X11Services>(clock, environment, ways.obstacle);
}

std::optional<QString> DisplayServices::obstacleInEnvironment()
{
    return findWays().obstacle;
}
