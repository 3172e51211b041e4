// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Linux/Applications/LinuxWorkspace.h"
#include "Desktop/Linux/Atspi/Accessibility.h"
#include "Desktop/Linux/Atspi/Environment.h"
#include "Desktop/Linux/DisplayServices.h"
#include "Desktop/Linux/Scripting/LinuxScripting.h"
#include "Desktop/Linux/Session/LinuxSession.h"
#include "Desktop/SystemClock.h"

#include <QDir>

// The Linux backend: owns all services and their threads. Constructed once, before the first action, and kept
// until the program exits. In a Wayland session its services don't connect to Xwayland. Thread: main.
class LinuxDesktop : private AtspiEnvironment
{
public:
    // Throws PlatformError if there is neither an X server nor a Wayland session.
    explicit LinuxDesktop(const QString &homeDirectory = QDir::homePath());

    // The references are valid for this object's lifetime.
    Desktop desktop();

private:
    // AtspiEnvironment, implemented by the other services.
    QCoro::Task<bool> canSendKeys() override;
    QCoro::Task<void> activate(RunningApplication application) override;
    QCoro::Task<bool> strikeKey(RunningApplication application, std::uint16_t virtualKey) override;
    QCoro::Task<AtspiTitles> titles(RunningApplication application) override;

    DisplayEnvironment displayEnvironment();
    QCoro::Task<bool> takesEveryCharacter(RunningApplication application);

    SystemClock m_clock;
    BoundedQueue m_gio{QStringLiteral("desktop.gio"), QStringLiteral("The desktop's application registry")};
    std::unique_ptr<DisplayServices> m_display = DisplayServices::connect(m_clock, displayEnvironment());
    LinuxSession m_session{m_display->x11(), [this] { return m_display->obstacle(); }};
    LinuxWorkspace m_workspace{m_display->windows(), m_gio, m_clock};
    LinuxScripting m_scripting{m_display->clipboard()};
    AtspiAccessibility m_accessibility{*this};
    Files m_files;
    Dialogs m_dialogs;
};
