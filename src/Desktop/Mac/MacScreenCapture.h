// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Applications/MacWindowList.h"
#include "Desktop/ScreenCapture.h"

// Pictures of the screen through the system's own command. Main thread. Without the Screen Recording
// permission it leaves no file, and has the system ask the user for it.
// `windowList` outlives this object.
class MacScreenCapture : public ScreenCapture
{
public:
    explicit MacScreenCapture(MacWindowList &windowList) : m_windowList(windowList) {}

    QCoro::Task<void> capture(QString path) override;

private:
    MacWindowList &m_windowList;
};
