// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacDesktop.h"

MacDesktop::MacDesktop(const QString &homeDirectory) : m_files(homeDirectory) {}

Desktop MacDesktop::desktop()
{
    return {m_session,   m_workspace, m_accessibility, m_keyboard, m_screenCapture,
            m_scripting, m_files,     m_dialogs,       m_clock};
}

MacAccessibility::Activate MacDesktop::activation()
{
    return [this](qint64 process) {
        RunningApplication application;
        application.processIdentifier = process;
        return m_workspace.activate(application);
    };
}
