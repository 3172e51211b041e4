// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/DisplayServices.h"

#include "Desktop/Linux/LinuxScreenCapture.h"
#include "Desktop/Linux/Session/SessionType.h"
#include "Desktop/Linux/Typing/LinuxKeyboard.h"
#include "Desktop/Linux/Wayland/Compositor.h"
#include "Desktop/Linux/Wayland/Keyboard.h"
#include "Desktop/Linux/Wayland/ScreenCapture.h"
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/Linux/X11/Display.h"

#include <utility>

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

class WaylandServices : public DisplayServices
{
public:
    WaylandServices(std::unique_ptr<WaylandConnection> connection, Clock &clock,
                    const KeyboardEnvironment &environment)
        : m_connection(std::move(connection)), m_windows(*m_connection, clock),
          m_keyboard(*m_connection, m_windows, environment.frontmostWindow, environment.takesEveryCharacter,
                     clock)
    {
    }

    WindowSystem &windows() override { return m_windows; }
    ReceiverKeyboard &keyboard() override { return m_keyboard; }
    ScreenCapture &screenCapture() override { return m_screenCapture; }

private:
    std::unique_ptr<WaylandConnection> m_connection;
    WaylandToplevels m_windows;
    WaylandKeyboard m_keyboard;
    WaylandScreenCapture m_screenCapture;
};

std::unique_ptr<WaylandConnection> compositorOf(SessionType type)
{
    return type == SessionType::Wayland ? connectToCompleteCompositor() : nullptr;
}

} // namespace

std::unique_ptr<DisplayServices> DisplayServices::connect(Clock &clock,
                                                          const KeyboardEnvironment &environment)
{
    const SessionType type = Sessions::typeWith(Sessions::displayServer());
    if (std::unique_ptr<WaylandConnection> compositor = compositorOf(type))
        return std::make_unique<WaylandServices>(std::move(compositor), clock, environment);
    return std::make_unique<X11Services>(clock, environment, Sessions::obstacle(type));
}

std::optional<QString> DisplayServices::obstacleInEnvironment()
{
    const SessionType type = Sessions::typeWith(Sessions::displayServer());
    return compositorOf(type) ? std::nullopt : Sessions::obstacle(type);
}
