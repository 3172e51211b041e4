// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/WindowStyler.h"

// Styles the window on Wayland, where only the compositor places windows, and on any other platform without
// X11. Thread: main.
class WaylandWindowStyler : public WindowStyler
{
    Q_OBJECT

public:
    WaylandWindowStyler();

    void style(QWindow &window) override;
    void bringForward(QWindow &window, const QString &activationToken) override;
};
