// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/MediaPlayers.h"

#include "Base/Text.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QDBusArgument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString prefix = u"org.mpris.MediaPlayer2."_s;
const QString failure = u"The media player doesn't answer."_s;
constexpr double microsecondsPerSecond = 1'000'000.0;

ScriptBus::Partner partner(const QString &service,
                           const QString &interface = u"org.mpris.MediaPlayer2.Player"_s)
{
    return {service, u"/org/mpris/MediaPlayer2"_s, interface};
}

// The player's method; empty for other commands.
QString methodOf(const QString &command)
{
    static const QHash<QString, QString> methods{
        {u"play"_s, u"Play"_s},           {u"pause"_s, u"Pause"_s},     {u"playpause"_s, u"PlayPause"_s},
        {u"stop"_s, u"Stop"_s},           {u"next track"_s, u"Next"_s}, {u"previous track"_s, u"Previous"_s},
        {u"back track"_s, u"Previous"_s},
    };
    return methods.value(command);
}

bool isOfPlayer(const QString &property)
{
    static const QStringList names{u"sound volume"_s, u"player state"_s, u"player position"_s};
    return names.contains(property);
}

// The track's entry; empty for other properties.
QString entryOf(const QString &property)
{
    static const QHash<QString, QString> entries{{u"name"_s, u"xesam:title"_s},
                                                 {u"title"_s, u"xesam:title"_s},
                                                 {u"artist"_s, u"xesam:artist"_s},
                                                 {u"album"_s, u"xesam:album"_s},
                                                 {u"duration"_s, u"mpris:length"_s}};
    return entries.value(property);
}

bool isProperty(const ScriptValue::Object &object)
{
    return object && object->kind == ScriptObject::Kind::Property;
}

// "Music" and its older name.
bool isAnyPlayer(const QString &application)
{
    return Text::equals(application, u"Music"_s) || Text::equals(application, u"iTunes"_s);
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> MediaPlayers::perform(ScriptCommand command)
{
    std::optional<ScriptValue> answer;
    if (!command.application)
        co_return answer;
    const QString method = methodOf(command.name);
    if (method.isEmpty())
        co_return co_await getOrSet(command);
    // `play track 3` would need the player's library.
    if (command.direct)
        co_return answer;
    const ScriptBus::Partner chosen = co_await player(*command.application);
    co_await m_bus.call(chosen, method, {}, failure);
    answer = ScriptValue();
    co_return answer;
}

QCoro::Task<std::optional<ScriptValue>> MediaPlayers::getOrSet(ScriptCommand command)
{
    std::optional<ScriptValue> answer;
    const bool isObject = command.direct && command.direct->is<ScriptValue::Object>();
    const ScriptValue::Object object = isObject ? command.direct->as<ScriptValue::Object>() : nullptr;
    if (!isProperty(object))
        co_return answer;
    const bool isTracks = isProperty(object->container) && object->container->name == u"current track";
    const bool isPlayers = isOfPlayer(object->name) && !isProperty(object->container);
    if (command.name == "get"_L1 && isTracks) {
        const ScriptBus::Partner chosen = co_await player(*command.application);
        answer = co_await propertyOfTrack(chosen, object->name);
    } else if (command.name == "get"_L1 && isPlayers) {
        const ScriptBus::Partner chosen = co_await player(*command.application);
        answer = co_await property(chosen, object->name);
    } else if (command.name == "set"_L1 && isPlayers && object->name == u"sound volume") {
        const ScriptValue wanted = ScriptCoercion::to(command.parameter(u"to"_s), u"real"_s, {});
        const double volume = std::clamp(wanted.as<double>(), 0.0, 100.0) / 100.0;
        const ScriptBus::Partner chosen = co_await player(*command.application);
        co_await m_bus.setProperty(chosen, u"Volume"_s, volume, failure);
        answer = ScriptValue();
    }
    co_return answer;
}

QCoro::Task<ScriptBus::Partner> MediaPlayers::player(QString application)
{
    const QStringList services = co_await m_bus.services();
    std::optional<QString> found;
    for (const QString &service : services) {
        if (!service.startsWith(prefix))
            continue;
        const bool isWanted = co_await isCalled(service, application);
        if (!isWanted)
            continue;
        const bool plays = co_await isPlaying(service);
        if (!found || plays)
            found = service;
        if (plays)
            break;
    }
    if (!found)
        throw ScriptError(u"No media player called “%1” is running."_s.arg(application),
                          ScriptError::NoSuchObject);
    co_return partner(*found);
}

// A player that doesn't tell its name has that of its service.
QCoro::Task<bool> MediaPlayers::isCalled(QString service, QString application)
{
    const QString name = service.mid(prefix.size()).section(u'.', 0, 0);
    if (isAnyPlayer(application) || Text::equals(name, application))
        co_return true;
    try {
        const ScriptBus::Partner object = partner(service, u"org.mpris.MediaPlayer2"_s);
        const QVariant identity = co_await m_bus.property(object, u"Identity"_s, failure);
        co_return Text::contains(identity.toString(), application);
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<bool> MediaPlayers::isPlaying(QString service)
{
    try {
        const QVariant status = co_await m_bus.property(partner(service), u"PlaybackStatus"_s, failure);
        co_return status.toString() == u"Playing";
    } catch (const PlatformError &) {
        co_return false;
    }
}

QCoro::Task<ScriptValue> MediaPlayers::property(ScriptBus::Partner player, QString name)
{
    ScriptValue value;
    if (name == "sound volume"_L1) {
        const QVariant volume = co_await m_bus.property(player, u"Volume"_s, failure);
        value = qint64(qRound(volume.toDouble() * 100.0));
    } else if (name == "player state"_L1) {
        const QVariant status = co_await m_bus.property(player, u"PlaybackStatus"_s, failure);
        value = ScriptConstant{Text::cleaned(status.toString()).toLower()};
    } else {
        const QVariant position = co_await m_bus.property(player, u"Position"_s, failure);
        value = position.toDouble() / microsecondsPerSecond;
    }
    co_return value;
}

// Several artists are joined; unknown properties are missing values.
QCoro::Task<ScriptValue> MediaPlayers::propertyOfTrack(ScriptBus::Partner player, QString name)
{
    const QString entry = entryOf(name);
    if (entry.isEmpty())
        throw ScriptError(u"Can’t get %1 of current track."_s.arg(name), ScriptError::NoSuchObject);
    const QVariant metadata = co_await m_bus.property(player, u"Metadata"_s, failure);
    const QVariant value = qdbus_cast<QVariantMap>(metadata).value(entry);
    if (!value.isValid())
        co_return ScriptValue();
    if (name == "duration"_L1)
        co_return value.toDouble() / microsecondsPerSecond;
    co_return Text::cleaned(value.toStringList().join(u", "_s));
}
