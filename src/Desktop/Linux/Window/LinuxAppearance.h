// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Window/AppearanceFacts.h"
#include "Desktop/Linux/Window/SettingsPortal.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/MainThreadCalls.h"
#include "Desktop/Shell/Appearance.h"

// The theme according to the desktop portal, the XSETTINGS daemon, GTK's settings and the application
// palette. Requires the application object. Thread: main.
class LinuxAppearance : public Appearance
{
    Q_OBJECT

public:
    // A null `display` means no XSETTINGS. `display` must outlive this object.
    explicit LinuxAppearance(X11Display *display);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void followXSettings(X11Display &display);
    void readPalette();
    void decide();

    AppearanceFacts m_facts;
    ThemeSettings m_file;
    SettingsPortal m_portal;
    MainThreadCalls m_calls;
};
