// SPDX-License-Identifier: Apache-2.0
#include "applications/support/Gnome.h"

#include "applications/support/PrivateDesktop.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>
#include <QTest>
#include <QVariantMap>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString remoteDesktop = u"org.gnome.Mutter.RemoteDesktop"_s;

QDBusMessage call(const QString &service, const QString &path, const QString &interface,
                  const QString &method, const QVariantList &arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

QDBusMessage callShell(const QString &method, const QVariantList &arguments = {})
{
    return call(u"org.orvane.Shell"_s, u"/org/orvane/Shell"_s, u"org.orvane.Shell"_s, method, arguments);
}

// A keyboard of the test's own, as if plugged in.
QString handsSession()
{
    static const QString session = [] {
        const QDBusMessage answer =
            call(remoteDesktop, u"/org/gnome/Mutter/RemoteDesktop"_s, remoteDesktop, u"CreateSession"_s);
        const QString path = answer.arguments().value(0).value<QDBusObjectPath>().path();
        call(remoteDesktop, path, remoteDesktop + u".Session"_s, u"Start"_s);
        return path;
    }();
    return session;
}

void notify(int code, bool isPressed)
{
    call(remoteDesktop, handsSession(), remoteDesktop + u".Session"_s, u"NotifyKeyboardKeycode"_s,
         {uint(code), isPressed});
}

} // namespace

QList<GnomeWindow> Gnome::windows()
{
    const QDBusMessage answer = callShell(u"Windows"_s);
    QList<GnomeWindow> windows;
    for (const QVariantMap &window : qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0))) {
        windows.append({window.value(u"identifier"_s).toUInt(), window.value(u"process"_s).toLongLong(),
                        window.value(u"title"_s).toString(), window.value(u"className"_s).toString(),
                        window.value(u"isActive"_s).toBool()});
    }
    return windows;
}

std::optional<GnomeWindow> Gnome::focused()
{
    for (const GnomeWindow &window : windows()) {
        if (window.isFocused)
            return window;
    }
    return std::nullopt;
}

bool Gnome::showsTitle(const QString &part)
{
    const QList<GnomeWindow> all = windows();
    return std::any_of(all.cbegin(), all.cend(),
                       [&part](const GnomeWindow &window) { return window.title.contains(part); });
}

bool Gnome::activate(const QString &title)
{
    for (const GnomeWindow &window : windows()) {
        if (window.title != title)
            continue;
        callShell(u"Activate"_s, {window.identifier});
        const auto isFocused = [&window] {
            const auto now = focused();
            return now && now->identifier == window.identifier;
        };
        return QTest::qWaitFor(isFocused, PrivateDesktop::patience);
    }
    return false;
}

void Gnome::showOverview(bool isShown)
{
    const QString shell = u"org.gnome.Shell"_s;
    call(shell, u"/org/gnome/Shell"_s, u"org.freedesktop.DBus.Properties"_s, u"Set"_s,
         {shell, u"OverviewActive"_s, QVariant::fromValue(QDBusVariant(isShown))});
}

QString Gnome::described()
{
    QStringList all;
    for (const GnomeWindow &window : windows()) {
        all.append(u"“%1” of %2%3"_s.arg(window.title, window.className,
                                         window.isFocused ? u" (focused)"_s : QString()));
    }
    return all.join(u", "_s);
}

bool Gnome::clear()
{
    for (const GnomeWindow &window : windows()) {
        if (window.process > 0 && window.process != QCoreApplication::applicationPid())
            ::kill(pid_t(window.process), SIGKILL);
    }
    return QTest::qWaitFor([] { return windows().isEmpty(); }, PrivateDesktop::patience);
}

void Gnome::hold(int code)
{
    notify(code, true);
}

void Gnome::release(int code)
{
    notify(code, false);
}

void Gnome::press(int code)
{
    hold(code);
    release(code);
}
