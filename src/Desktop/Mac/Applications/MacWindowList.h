// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/MacQueue.h"
#include "Desktop/Workspace.h"

// The windows on the screen, front to back, as the window server lists them. Main thread. Without the Screen
// Recording permission the titles of other applications' windows are absent.
class MacWindowList
{
public:
    // Bounded; empty when the window server does not answer.
    QCoro::Task<QList<WindowDescription>> onScreenWindows();

private:
    MacQueue m_queue{QStringLiteral("desktop.windows"), QStringLiteral("The window server")};
};
