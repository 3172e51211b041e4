// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Scripting/ScriptBus.h"
#include "Scripting/ScriptHost.h"

// Carries out what scripts say to media players (MPRIS): `play`, `next track`, `name of current track`,
// `sound volume` and so on. "Music" is any player, the one that plays first. `bus` must outlive this object.
// Thread: main.
class MediaPlayers : public ScriptHost
{
public:
    explicit MediaPlayers(ScriptBus &bus) : m_bus(bus) {}

    // Throws ScriptError if no such player runs.
    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand command) override;

private:
    QCoro::Task<ScriptBus::Partner> player(QString application);
    QCoro::Task<bool> isCalled(QString service, QString application);
    QCoro::Task<bool> isPlaying(QString service);
    QCoro::Task<ScriptValue> property(ScriptBus::Partner player, QString name);
    QCoro::Task<ScriptValue> propertyOfTrack(ScriptBus::Partner player, QString name);
    QCoro::Task<std::optional<ScriptValue>> getOrSet(ScriptCommand command);

    ScriptBus &m_bus;
};
