// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/WindowStyler.h"

// The window on Wayland, where the compositor alone places windows and is always there; and wherever else
// there is no X server. Main thread.
class WaylandWindowStyler : public WindowStyler
{
    Q_OBJECT

public:
    WaylandWindowStyler();

    void style(QWindow &window) override;
    void bringForward(QWindow &window, const QString &activationToken) override;
};
