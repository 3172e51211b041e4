// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Applications/MacActivation.h"
#include "Desktop/Shell/WindowStyler.h"

// Styles the window through AppKit: an ordinary window with an invisible title bar, over a material that
// blurs the background. Needs the application object. Thread: main.
class MacWindowStyler : public WindowStyler
{
    Q_OBJECT

public:
    MacWindowStyler();

    void style(QWindow &window) override;
    void bringForward(QWindow &window, const QString &activationToken) override;
    bool hideApplication() override;
    int titleBarHeight() const override;

private:
    MacActivation m_activation;
};
