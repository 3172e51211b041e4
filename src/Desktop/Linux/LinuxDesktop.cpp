// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxDesktop.h"

#include "Desktop/Linux/Applications/UserFolders.h"

LinuxDesktop::LinuxDesktop(const QString &homeDirectory) : m_files(homeDirectory, &UserFolders::named) {}

Desktop LinuxDesktop::desktop()
{
    return {m_session,       m_workspace, m_accessibility, m_keyboard, m_windowList,
            m_screenCapture, m_scripting, m_files,         m_clock};
}

AtspiAccessibility::Environment LinuxDesktop::accessibilityEnvironment()
{
    AtspiAccessibility::Environment environment;
    environment.canSendKeys = [this] { return m_keyboard.canSendKeys(); };
    environment.activate = [this](qint64 process) {
        RunningApplication application;
        application.processIdentifier = process;
        return m_workspace.activate(application);
    };
    environment.titlesInFront = [this](qint64 process) { return m_workspace.titlesInFront(process); };
    environment.strikeKey = [this](qint64 process, std::uint16_t virtualKey) {
        return m_keyboard.strike(virtualKey, process);
    };
    return environment;
}
