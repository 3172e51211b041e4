// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/Application/AppDelegate.h"

#include "OrvaneApp/Application/HotKey.h"

#include <QEvent>
#include <QGuiApplication>

AppDelegate::AppDelegate(const Shell &shell, ProgramInstance &instance, QObject *parent)
    : QObject(parent), m_shell(shell), m_instance(instance)
{
    QGuiApplication::setQuitOnLastWindowClosed(applicationShouldTerminateAfterLastWindowClosed());
    qApp->installEventFilter(this);
    connect(&instance, &ProgramInstance::activated, this, &AppDelegate::applicationShouldHandleReopen);
    connect(&instance, &ProgramInstance::toggleRequested, this,
            [](const QString &activationToken) { HotKey::summon(activationToken); });
}

AppDelegate::~AppDelegate()
{
    HotKey::shared().release();
}

void AppDelegate::applicationDidFinishLaunching(StartUp startUp)
{
    HotKey::shared().registerHotKey(m_shell.hotKeys, m_shell.windowStyler);
    if (startUp == StartUp::Shown)
        HotKey::bringForward(m_instance.launchToken());
}

void AppDelegate::applicationShouldHandleReopen(const QString &activationToken)
{
    HotKey::bringForward(activationToken);
}

bool AppDelegate::eventFilter(QObject *object, QEvent *event)
{
    if (object != qApp || event->type() != QEvent::Quit)
        return QObject::eventFilter(object, event);
    // The default handling would close the windows first, and ours only hides.
    QCoreApplication::exit();
    return true;
}
