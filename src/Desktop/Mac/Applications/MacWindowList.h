// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/MacQueue.h"
#include "Desktop/Workspace.h"

// The windows on the screen, front to back, from the window server. Without the Screen Recording permission,
// other applications' windows have no titles. Thread: main.
class MacWindowList
{
public:
    // Returns an empty list if the window server doesn't respond in time.
    QCoro::Task<QList<WindowDescription>> onScreenWindows();

private:
    MacQueue m_queue{QStringLiteral("desktop.windows"), QStringLiteral("The window server")};
};
