// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxShell.h"

#include "Desktop/Linux/HotKeys/LinuxHotKeys.h"
#include "Desktop/Linux/HotKeys/WaylandHotKeys.h"
#include "Desktop/Linux/Window/LinuxAppearance.h"
#include "Desktop/Linux/Window/WaylandWindowStyler.h"
#include "Desktop/Linux/Window/X11WindowStyler.h"

#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

// Connects to the X server that shows our windows.
std::unique_ptr<X11Display> connectToDisplay(Clock &clock)
{
    if (QGuiApplication::platformName() != "xcb"_L1)
        return nullptr;
    try {
        return std::make_unique<X11Display>(clock);
    } catch (const PlatformError &) {
        // The window also works without these services.
        return nullptr;
    }
}

} // namespace

LinuxShell::LinuxShell() : m_display(connectToDisplay(m_clock))
{
    // In a Wayland session, X clients receive only keys sent to X windows.
    const bool seesAllKeys = m_display && !m_display->connection().isXwayland();
    if (seesAllKeys)
        m_hotKeys = std::make_unique<LinuxHotKeys>(*m_display);
    else
        m_hotKeys = std::make_unique<WaylandHotKeys>();
    m_appearance = std::make_unique<LinuxAppearance>(m_display.get());
    if (m_display)
        m_windowStyler = std::make_unique<X11WindowStyler>(*m_display, m_clock);
    else
        m_windowStyler = std::make_unique<WaylandWindowStyler>();
}

LinuxShell::~LinuxShell() = default;

Shell LinuxShell::shell()
{
    return {*m_hotKeys, *m_appearance, *m_windowStyler, m_menuBar, m_activity};
}
