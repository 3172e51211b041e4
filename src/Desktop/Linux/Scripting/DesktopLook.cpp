// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/DesktopLook.h"

#include "Desktop/Linux/Scripting/DesktopSettings.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QCoroTimer>
#include <QDBusArgument>
#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrl>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr uint darkScheme = 1; // of the portal

// A bound for the number of screens, whatever Plasma answers.
constexpr uint mostScreens = 16;

const DesktopSettings::Key colourScheme{"org.gnome.desktop.interface", "color-scheme"};
const DesktopSettings::Key lightPicture{"org.gnome.desktop.background", "picture-uri"};
const DesktopSettings::Key darkPicture{"org.gnome.desktop.background", "picture-uri-dark"};

const QString unknownDarkness = u"This desktop doesn't tell whether it is dark."_s;
const QString unknownPicture = u"Scripts can't change the picture of this desktop."_s;

enum class Subject { None, DarkMode, Picture };

bool isDesktop(const ScriptObject &object)
{
    return object.name == u"desktop" || object.name == u"current desktop";
}

Subject subjectOf(const ScriptValue::Object &object)
{
    if (!object || object->kind != ScriptObject::Kind::Property || !object->container)
        return Subject::None;
    const ScriptObject &container = *object->container;
    if (object->name == u"dark mode" && container.name == u"appearance preferences")
        return Subject::DarkMode;
    const bool isPicture = object->name == u"picture" && isDesktop(container);
    return isPicture || object->name == u"desktop picture" ? Subject::Picture : Subject::None;
}

// An existing picture's file.
QString pictureFile(const ScriptValue &value)
{
    const QString text = ScriptCoercion::to(value, u"text"_s, {}).as<QString>();
    const QString path = text.startsWith(u"~/") ? text.mid(2) : text;
    const QFileInfo file(QDir::home(), path);
    if (!file.isFile())
        throw ScriptError(u"Nothing exists at %1."_s.arg(text), ScriptError::NoSuchObject);
    const QString type = QMimeDatabase().mimeTypeForFile(file).name();
    if (!type.startsWith("image/"_L1))
        throw ScriptError(u"“%1” is no picture."_s.arg(file.fileName()));
    return file.absoluteFilePath();
}

ScriptBus::Partner plasma()
{
    return {u"org.kde.plasmashell"_s, u"/PlasmaShell"_s, u"org.kde.PlasmaShell"_s};
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> DesktopLook::perform(ScriptCommand command)
{
    std::optional<ScriptValue> answer;
    const bool isObject = command.direct && command.direct->is<ScriptValue::Object>();
    const Subject subject = subjectOf(isObject ? command.direct->as<ScriptValue::Object>() : nullptr);
    const bool isGet = command.name == "get"_L1;
    if (subject == Subject::None || (!isGet && command.name != u"set"))
        co_return answer;
    const ScriptValue wanted = command.parameter(u"to"_s);
    if (subject == Subject::DarkMode && isGet) {
        answer = ScriptValue(co_await isDark());
    } else if (subject == Subject::DarkMode) {
        co_await setDark(ScriptCoercion::to(wanted, u"boolean"_s, {}).as<bool>());
        answer = ScriptValue();
    } else if (isGet) {
        answer = co_await picture();
    } else {
        co_await setPicture(pictureFile(wanted));
        answer = ScriptValue();
    }
    co_return answer;
}

// What the desktop tells applications.
QCoro::Task<bool> DesktopLook::isDark()
{
    const ScriptBus::Partner portal{u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
                                    u"org.freedesktop.portal.Settings"_s};
    const QVariantList key{u"org.freedesktop.appearance"_s, u"color-scheme"_s};
    const QVariantList values = co_await m_bus.call(portal, u"Read"_s, key, unknownDarkness);
    QVariant scheme = values.value(0);
    // Older portals wrap the value twice.
    while (scheme.metaType() == QMetaType::fromType<QDBusVariant>())
        scheme = scheme.value<QDBusVariant>().variant();
    co_return scheme.toUInt() == darkScheme;
}

// A setting that the desktop doesn't follow is put back.
QCoro::Task<void> DesktopLook::setDark(bool isWanted)
{
    const bool isThere = co_await isDark();
    if (isThere == isWanted)
        co_return;
    const auto read = [] { return DesktopSettings::text(colourScheme); };
    const std::optional<QString> before = co_await m_settings.run(read);
    const QString scheme = isWanted ? u"prefer-dark"_s : u"default"_s;
    const auto write = [scheme] { DesktopSettings::setText(colourScheme, scheme); };
    co_await m_settings.run(write);
    const bool isFollowed = co_await becomesDark(isWanted);
    if (isFollowed)
        co_return;
    const auto restore = [before] { DesktopSettings::setText(colourScheme, before.value_or(QString())); };
    co_await m_settings.run(restore);
    throw PlatformError(u"Scripts can't make this desktop light or dark."_s);
}

QCoro::Task<bool> DesktopLook::becomesDark(bool isWanted)
{
    const auto moment = 50ms;
    for (auto waited = 0ms; waited < Deadlines::answer; waited += moment) {
        const bool isThere = co_await isDark();
        if (isThere == isWanted)
            co_return true;
        co_await QCoro::sleepFor(moment);
    }
    co_return false;
}

QCoro::Task<ScriptValue> DesktopLook::picture()
{
    const QStringList services = co_await m_bus.services();
    QString url;
    if (services.contains(u"org.gnome.Shell"_s)) {
        const auto read = [] { return DesktopSettings::text(lightPicture); };
        const std::optional<QString> set = co_await m_settings.run(read);
        url = set.value_or(QString());
    } else if (services.contains(plasma().service)) {
        const QVariantList screen{0U};
        const QVariantList values = co_await m_bus.call(plasma(), u"wallpaper"_s, screen, unknownPicture);
        url = qdbus_cast<QVariantMap>(values.value(0)).value(u"Image"_s).toString();
    } else {
        throw PlatformError(u"This desktop doesn't tell its picture."_s);
    }
    co_return url.isEmpty() ? ScriptValue() : ScriptValue(QUrl(url).path());
}

QCoro::Task<void> DesktopLook::setPicture(QString path)
{
    const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    const QStringList services = co_await m_bus.services();
    if (services.contains(plasma().service)) {
        co_await setPlasmaPicture(url);
        co_return;
    }
    if (!services.contains(u"org.gnome.Shell"_s))
        throw PlatformError(unknownPicture);
    const auto write = [url] {
        DesktopSettings::setText(lightPicture, url);
        if (DesktopSettings::text(darkPicture))
            DesktopSettings::setText(darkPicture, url);
    };
    co_await m_settings.run(write);
}

// A screen that doesn't exist has no picture.
QCoro::Task<void> DesktopLook::setPlasmaPicture(QString url)
{
    bool isSet = false;
    for (uint screen = 0; screen < mostScreens; ++screen) {
        const QVariantList number{screen};
        const QVariantList change{u"org.kde.image"_s, QVariantMap{{u"Image"_s, url}}, screen};
        co_await m_bus.call(plasma(), u"setWallpaper"_s, change, unknownPicture);
        const QVariantList values = co_await m_bus.call(plasma(), u"wallpaper"_s, number, unknownPicture);
        if (qdbus_cast<QVariantMap>(values.value(0)).value(u"Image"_s).toString() != url)
            break;
        isSet = true;
    }
    if (!isSet)
        throw PlatformError(unknownPicture);
}
