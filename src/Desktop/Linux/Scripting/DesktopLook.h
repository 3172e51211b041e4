// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Scripting/ScriptBus.h"
#include "Scripting/ScriptHost.h"

// Carries out what scripts say about dark mode and the desktop's picture. `bus` must outlive this object.
// Thread: main.
class DesktopLook : public ScriptHost
{
public:
    explicit DesktopLook(ScriptBus &bus) : m_bus(bus) {}

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    QCoro::Task<bool> isDark();
    QCoro::Task<void> setDark(bool isWanted);
    QCoro::Task<bool> becomesDark(bool isWanted);

    // The picture is the same on all desktops and screens.
    QCoro::Task<ScriptValue> picture();
    QCoro::Task<void> setPicture(QString path);
    QCoro::Task<void> setPlasmaPicture(QString url);

    ScriptBus &m_bus;
    BoundedQueue m_settings{QStringLiteral("desktop.settings"), QStringLiteral("The desktop's settings")};
};
