// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/LinuxAppearance.h"

#include "Desktop/Linux/Window/X11Settings.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

LinuxAppearance::LinuxAppearance(X11Display *display)
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    m_file = ThemeSettings::read(folder + u"/gtk-3.0/settings.ini"_s);
    m_facts.themeOverride = qEnvironmentVariable("GTK_THEME");
    m_facts.themeName = m_file.themeName;
    m_facts.prefersDarkTheme = m_file.prefersDarkTheme;
    readPalette();
    decide();
    qGuiApp->installEventFilter(this);
    connect(&m_portal, &SettingsPortal::colorSchemeChanged, this, &LinuxAppearance::decide);
    if (display)
        followXSettings(*display);
}

void LinuxAppearance::followXSettings(X11Display &display)
{
    const std::function<void(QString)> themeChanged = [this](const QString &name) {
        m_facts.themeName = name.isEmpty() ? m_file.themeName : name;
        decide();
    };
    const auto settings = std::make_shared<X11Settings>(display.connection(), m_calls.wrap(themeChanged));
    display.post([settings, connection = &display.connection()] {
        connection->addEventHandler(
            [settings](const xcb_generic_event_t &event) { settings->handle(event); });
        settings->follow();
    });
}

bool LinuxAppearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp) {
        readPalette();
        decide();
    }
    return Appearance::eventFilter(watched, event);
}

void LinuxAppearance::readPalette()
{
    const QPalette palette = QGuiApplication::palette();
    m_facts.windowLightness = palette.color(QPalette::Window).lightness();
    m_facts.windowTextLightness = palette.color(QPalette::WindowText).lightness();
}

void LinuxAppearance::decide()
{
    m_facts.portalScheme = m_portal.colorScheme();
    setDark(m_facts.isDark());
}
