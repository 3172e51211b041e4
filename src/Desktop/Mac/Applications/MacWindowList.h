// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/MacQueue.h"
#include "Desktop/WindowList.h"

// The windows as the window server lists them. Main thread. Without the Screen Recording permission the
// titles of other applications' windows are absent.
class MacWindowList : public WindowList
{
public:
    QCoro::Task<QList<WindowDescription>> onScreenWindows() override;
    qint64 ownProcessIdentifier() const override;

private:
    MacQueue m_queue{QStringLiteral("desktop.windows"), QStringLiteral("The window server")};
};
