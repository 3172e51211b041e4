// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/Screen.h"

// The part of Screen that differs between window systems. Thread: main.
class ScreenObserver
{
public:
    virtual ~ScreenObserver() = default;

    // Oldest first.
    virtual QList<ScreenWindow> windows() = 0;
    virtual std::optional<ScreenWindow> activeWindow() = 0;
    virtual void pressKey(const QString &combination) = 0;
    virtual void requestFocus(quint32 window) = 0;
};
