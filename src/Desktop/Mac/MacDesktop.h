// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Mac/Accessibility/MacAccessibility.h"
#include "Desktop/Mac/Applications/MacWindowList.h"
#include "Desktop/Mac/Applications/MacWorkspace.h"
#include "Desktop/Mac/MacScreenCapture.h"
#include "Desktop/Mac/MacScripting.h"
#include "Desktop/Mac/Session/MacSession.h"
#include "Desktop/Mac/Typing/MacKeyboard.h"
#include "Desktop/SystemClock.h"

#include <QDir>

// The macOS desktop: owns all services and their threads. Create once, before the first action, and destroy
// at program end. Thread: main.
class MacDesktop
{
public:
    explicit MacDesktop(const QString &homeDirectory = QDir::homePath());

    // The references are valid for this object's lifetime.
    Desktop desktop();

private:
    MacAccessibility::Activate activation();

    MacSession m_session;
    SystemClock m_clock;
    MacWindowList m_windowList;
    MacWorkspace m_workspace{m_clock, m_windowList};
    MacKeyboard m_keyboard{m_workspace, m_clock};
    MacScreenCapture m_screenCapture{m_windowList};
    MacScripting m_scripting;
    MacAccessibility m_accessibility{activation()};
    Files m_files;
    Dialogs m_dialogs;
};
