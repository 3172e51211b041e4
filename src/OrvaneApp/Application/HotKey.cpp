// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/Application/HotKey.h"

#include <QGuiApplication>
#include <QWindow>

namespace {

// Excludes menus and other windows that belong to a window.
bool canBecomeMain(const QWindow &window)
{
    return window.type() == Qt::Window && !window.transientParent();
}

} // namespace

HotKey &HotKey::shared()
{
    static HotKey hotKey;
    return hotKey;
}

void HotKey::registerHotKey(HotKeys &hotKeys, WindowStyler &styler)
{
    m_styler = &styler;
    m_acquiring = acquire(hotKeys);
}

void HotKey::release()
{
    m_reference.reset();
    m_styler = nullptr;
}

QCoro::Task<void> HotKey::acquire(HotKeys &hotKeys)
{
    const std::function<void()> pressed = [] {
        // Deferred: the event handler must return at once.
        QMetaObject::invokeMethod(
            &shared(), [] { summon(); }, Qt::QueuedConnection);
    };
    const std::shared_ptr<HotKeyReference> reference = co_await hotKeys.registerHotKey(
        ProgramHotKey::virtualKey, ProgramHotKey::modifiers, ProgramHotKey::identifier, pressed);
    if (m_styler)
        m_reference = reference;
}

void HotKey::summon(const QString &activationToken)
{
    const QWindow *keyWindow = QGuiApplication::focusWindow();
    if (!keyWindow || !keyWindow->isVisible()) {
        bringForward(activationToken);
        return;
    }
    if (shared().m_styler && shared().m_styler->hideApplication())
        return;
    for (QWindow *window : QGuiApplication::topLevelWindows())
        window->hide();
}

void HotKey::bringForward(const QString &activationToken)
{
    for (QWindow *window : QGuiApplication::topLevelWindows())
        if (canBecomeMain(*window) && shared().m_styler)
            shared().m_styler->bringForward(*window, activationToken);
    Q_EMIT shared().summonPalette();
}
