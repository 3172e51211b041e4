// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxDesktop.h"

#include "Desktop/Linux/Applications/UserFolders.h"

LinuxDesktop::LinuxDesktop(const QString &homeDirectory) : m_files(homeDirectory, &UserFolders::named) {}

Desktop LinuxDesktop::desktop()
{
    return {m_session,       m_workspace, m_accessibility, m_keyboard,
            m_screenCapture, m_scripting, m_files,         m_clock};
}

QCoro::Task<bool> LinuxDesktop::canSendKeys()
{
    return m_keyboard.canSendKeys();
}

QCoro::Task<void> LinuxDesktop::activate(qint64 processIdentifier)
{
    RunningApplication application;
    application.processIdentifier = processIdentifier;
    return m_workspace.activate(application);
}

QCoro::Task<bool> LinuxDesktop::strikeKey(qint64 processIdentifier, std::uint16_t virtualKey)
{
    return m_keyboard.strike(virtualKey, processIdentifier);
}

QCoro::Task<QStringList> LinuxDesktop::titlesInFront(qint64 processIdentifier)
{
    return m_workspace.titlesInFront(processIdentifier);
}
