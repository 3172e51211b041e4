// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxDesktop.h"

#include "Desktop/Linux/Applications/UserFolders.h"

LinuxDesktop::LinuxDesktop(const QString &homeDirectory) : m_files(homeDirectory, &UserFolders::named) {}

Desktop LinuxDesktop::desktop()
{
    return {m_session,
            m_workspace,
            m_accessibility,
            m_display->keyboard(),
            m_display->screenCapture(),
            m_scripting,
            m_files,
            m_dialogs,
            m_clock};
}

QCoro::Task<bool> LinuxDesktop::canSendKeys()
{
    return m_display->keyboard().canSendKeys();
}

QCoro::Task<void> LinuxDesktop::activate(RunningApplication application)
{
    return m_workspace.activate(application);
}

QCoro::Task<bool> LinuxDesktop::strikeKey(RunningApplication application, std::uint16_t virtualKey)
{
    return m_display->keyboard().strike(virtualKey, application);
}

QCoro::Task<AtspiTitles> LinuxDesktop::titles(RunningApplication application)
{
    const WindowSnapshot now = co_await m_workspace.windows();
    const qint64 process = application.processIdentifier;
    co_return AtspiTitles{now.titlesInFront(process, application.part),
                          now.foreignTitles(process, application.part)};
}

DisplayEnvironment LinuxDesktop::displayEnvironment()
{
    return {[this] { return m_workspace.frontmostWindow(); },
            [this](RunningApplication application) { return takesEveryCharacter(application); },
            [this](RunningApplication application) { return m_workspace.isTerminal(application); },
            [this](const QString &applicationIdentifier) {
                return m_workspace.programsOf(applicationIdentifier);
            }};
}

// An application that doesn't answer may be based on Chromium, which by default isn't registered.
QCoro::Task<bool> LinuxDesktop::takesEveryCharacter(RunningApplication application)
{
    const AtspiToolkit toolkit = co_await m_accessibility.toolkitOf(application);
    co_return toolkit != AtspiToolkit::Chromium &&toolkit != AtspiToolkit::Other;
}
