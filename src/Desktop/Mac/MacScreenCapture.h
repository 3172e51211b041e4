// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Applications/MacWindowList.h"
#include "Desktop/ScreenCapture.h"

// Takes screenshots with the system's screencapture command. Without the Screen Recording permission, makes
// the system prompt the user for it and creates no file. `windowList` must outlive this object. Thread: main.
class MacScreenCapture : public ScreenCapture
{
public:
    explicit MacScreenCapture(MacWindowList &windowList) : m_windowList(windowList) {}

    QCoro::Task<void> capture(QString path) override;

private:
    MacWindowList &m_windowList;
};
