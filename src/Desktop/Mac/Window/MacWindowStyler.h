// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Mac/Applications/MacActivation.h"
#include "Desktop/Shell/WindowStyler.h"

// The window in AppKit: an ordinary window whose title bar cannot be seen, over the material that blurs what
// lies behind it. Main thread, with the application object there.
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
