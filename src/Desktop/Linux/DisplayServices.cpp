// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/DisplayServices.h"

#include "Desktop/Linux/LinuxScreenCapture.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/Typing/LinuxKeyboard.h"
#include "Desktop/Linux/Wayland/Compositor.h"
#include "Desktop/Linux/Wayland/Keyboard.h"
#include "Desktop/Linux/Wayland/PlasmaKeyboard.h"
#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/Linux/X11/Display.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

class X11Services : public DisplayServices
{
public:
    X11Services(Clock &clock, const KeyboardEnvironment &environment, const std::optional<QString> &obstacle)
        : m_obstacle(obstacle), m_display(clock, obstacle), m_keyboard(m_display, environment.frontmostWindow)
    {
    }

    std::optional<QString> obstacle() const override { return m_obstacle; }
    WindowSystem &windows() override { return m_display; }
    ReceiverKeyboard &keyboard() override { return m_keyboard; }
    ScreenCapture &screenCapture() override { return m_screenCapture; }
    X11Display *x11() override { return &m_display; }

private:
    const std::optional<QString> m_obstacle;
    X11Display m_display;
    LinuxKeyboard m_keyboard;
    LinuxScreenCapture m_screenCapture{m_display};
};

// For compositors that offer no screenshots.
class NoScreenCapture : public ScreenCapture
{
public:
    QCoro::Task<void> capture(QString /* path */) override
    {
        throw PlatformError(u"This desktop offers no way to take a picture of the screen."_s);
        co_return;
    }
};

std::unique_ptr<WindowSystem> windowsOf(WaylandConnection &connection, const WaylandOffer &offer,
                                        Clock &clock)
{
    if (offer.windows == WaylandOffer::Windows::Plasma)
        return std::make_unique<PlasmaWindows>(connection, clock);
    return std::make_unique<WaylandToplevels>(connection, clock);
}

std::unique_ptr<ReceiverKeyboard> keyboardOf(WaylandConnection &connection, const WaylandOffer &offer,
                                             WindowSystem &windows, const KeyboardEnvironment &environment,
                                             Clock &clock)
{
    if (offer.keys == WaylandOffer::Keys::Plasma)
        return std::make_unique<PlasmaKeyboard>(connection, windows, environment.frontmostWindow,
                                                environment.isTerminal, clock);
    return std::make_unique<WaylandKeyboard>(connection, windows, environment.frontmostWindow,
                                             environment.takesEveryCharacter, clock);
}

std::unique_ptr<ScreenCapture> screenCaptureOf(const WaylandOffer &offer)
{
    if (offer.pictures)
        return std::make_unique<WaylandScreenCapture>();
    return std::make_unique<NoScreenCapture>();
}

class WaylandServices : public DisplayServices
{
public:
    WaylandServices(std::unique_ptr<WaylandConnection> connection, const WaylandOffer &offer, Clock &clock,
                    const KeyboardEnvironment &environment)
        : m_connection(std::move(connection)), m_windows(windowsOf(*m_connection, offer, clock)),
          m_keyboard(keyboardOf(*m_connection, offer, *m_windows, environment, clock)),
          m_screenCapture(screenCaptureOf(offer))
    {
    }

    WindowSystem &windows() override { return *m_windows; }
    ReceiverKeyboard &keyboard() override { return *m_keyboard; }
    ScreenCapture &screenCapture() override { return *m_screenCapture; }

private:
    std::unique_ptr<WaylandConnection> m_connection;
    std::unique_ptr<WindowSystem> m_windows;
    std::unique_ptr<ReceiverKeyboard> m_keyboard;
    std::unique_ptr<ScreenCapture> m_screenCapture;
};

std::optional<QString> obstacleIn(SessionType type, const WaylandOffer &offer)
{
    if (type == SessionType::Wayland && offer.isComplete())
        return std::nullopt;
    if (type == SessionType::Wayland && offer.isWithheld)
        return u"This desktop lets only programs that it knows see and operate it: in a terminal, enter "
               "“orvane integrate”, then start Orvane again."_s;
    return Sessions::obstacle(type);
}

} // namespace

std::unique_ptr<DisplayServices> DisplayServices::connect(Clock &clock,
                                                          const KeyboardEnvironment &environment)
{
    const SessionType type = Sessions::typeWith(Sessions::displayServer());
    std::unique_ptr<WaylandConnection> compositor =
        type == SessionType::Wayland ? connectToCompositor() : nullptr;
    const WaylandOffer offer = compositor ? WaylandOffer::of(*compositor) : WaylandOffer();
    if (offer.isComplete())
        return std::make_unique<WaylandServices>(std::move(compositor), offer, clock, environment);
    return std::make_unique<X11Services>(clock, environment, obstacleIn(type, offer));
}

std::optional<QString> DisplayServices::obstacleInEnvironment()
{
    const SessionType type = Sessions::typeWith(Sessions::displayServer());
    return obstacleIn(type, type == SessionType::Wayland ? WaylandOffer::ofEnvironment() : WaylandOffer());
}
