// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Appearance.h"
#include "Desktop/Linux/Window/AppearanceFacts.h"
#include "Desktop/Linux/Window/SettingsPortal.h"
#include "Desktop/Linux/X11/Display.h"
#include "Desktop/MainThreadCalls.h"

// Light or dark by what the desktop portal, the X settings daemon, GTK's settings and the application palette
// tell. Main thread, with the application object there.
class LinuxAppearance : public Appearance
{
    Q_OBJECT

public:
    // Without a display, the X settings are not asked. `display` outlives this object.
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
