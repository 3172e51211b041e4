// SPDX-License-Identifier: Apache-2.0
#include "applications/support/GnomeScreen.h"

#include "Desktop/Linux/Wayland/UserKeymap.h"
#include "Support/Awaited.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/X11Names.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QProcess>
#include <QTest>
#include <QVariantMap>

#include <algorithm>

#include <xkbcommon/xkbcommon.h>

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

QDBusMessage callExtension(const QString &method, const QVariantList &arguments = {})
{
    return call(u"org.orvane.Shell"_s, u"/org/orvane/Shell"_s, u"org.orvane.Shell"_s, method, arguments);
}

// A keyboard of the test's own, as if plugged in.
QString newHands()
{
    const QDBusMessage answer =
        call(remoteDesktop, u"/org/gnome/Mutter/RemoteDesktop"_s, remoteDesktop, u"CreateSession"_s);
    const QString path = answer.arguments().value(0).value<QDBusObjectPath>().path();
    call(remoteDesktop, path, remoteDesktop + u".Session"_s, u"Start"_s);
    return path;
}

QDBusMessage callHands(const QString &method, const QVariantList &arguments)
{
    static const QString hands = newHands();
    return call(remoteDesktop, hands, remoteDesktop + u".Session"_s, method, arguments);
}

void setKey(int code, bool isDown)
{
    callHands(u"NotifyKeyboardKeycode"_s, {uint(code), isDown});
}

QList<QVariantMap> windowsFrontToBack()
{
    return qdbus_cast<QList<QVariantMap>>(callExtension(u"Windows"_s).arguments().value(0));
}

ScreenWindow described(const QVariantMap &values)
{
    ScreenWindow window;
    window.identifier = values.value(u"identifier"_s).toUInt();
    window.process = values.value(u"process"_s).toLongLong();
    window.title = values.value(u"title"_s).toString();
    window.applicationIdentifier = values.value(u"className"_s).toString();
    window.className = X11Names::classOf(window.applicationIdentifier);
    return window;
}

// The keysym of xdotool's name of a key.
xkb_keysym_t symbolOf(const QString &name)
{
    const xkb_keysym_t symbol =
        xkb_keysym_from_name(X11Names::keyName(name).toUtf8().constData(), XKB_KEYSYM_NO_FLAGS);
    if (symbol == XKB_KEY_NoSymbol)
        qFatal("no key is called %s", qPrintable(name));
    return symbol;
}

class Observer : public ScreenObserver
{
public:
    QList<ScreenWindow> windows() override
    {
        QList<ScreenWindow> found;
        for (const QVariantMap &window : windowsFrontToBack())
            found << described(window);
        std::ranges::sort(found, {}, &ScreenWindow::identifier);
        return found;
    }

    std::optional<ScreenWindow> activeWindow() override
    {
        for (const QVariantMap &window : windowsFrontToBack()) {
            if (window.value(u"isActive"_s).toBool())
                return described(window);
        }
        return std::nullopt;
    }

    void pressKey(const QString &combination) override
    {
        QList<xkb_keysym_t> symbols;
        for (const QString &name : combination.split(u'+'))
            symbols << symbolOf(name);
        for (const xkb_keysym_t symbol : symbols)
            callHands(u"NotifyKeyboardKeysym"_s, {uint(symbol), true});
        std::ranges::reverse(symbols);
        for (const xkb_keysym_t symbol : symbols)
            callHands(u"NotifyKeyboardKeysym"_s, {uint(symbol), false});
    }

    void requestFocus(quint32 window) override { callExtension(u"Activate"_s, {window}); }
};

} // namespace

ScreenObserver &GnomeScreen::observer()
{
    static Observer observer;
    return observer;
}

void GnomeScreen::hold(int code)
{
    setKey(code, true);
}

void GnomeScreen::release(int code)
{
    setKey(code, false);
}

void GnomeScreen::press(int code)
{
    hold(code);
    release(code);
}

bool GnomeScreen::useLayout(Layout layout)
{
    struct Description
    {
        QString name;
        int keyOfZ; // none types it: 0
    };
    static const QMap<Layout, Description> layouts{{Layout::US, {u"us"_s, 52}},
                                                   {Layout::German, {u"de"_s, 29}},
                                                   {Layout::French, {u"fr"_s, 25}},
                                                   {Layout::Russian, {u"ru"_s, 0}}};
    const Description wanted = layouts.value(layout);
    QProcess::execute(u"gsettings"_s, {u"set"_s, u"org.gnome.desktop.input-sources"_s, u"sources"_s,
                                       u"[('xkb', '%1')]"_s.arg(wanted.name)});
    WaylandConnection connection;
    UserKeymap keymap(connection);
    const auto isUsed = [&] {
        const UserLayout now = Awaited::result(keymap.layout(0));
        return now.keys.characters.value(U'z').code == wanted.keyOfZ;
    };
    return QTest::qWaitFor(isUsed, PrivateDesktop::patience);
}

bool GnomeScreen::activate(const QString &title)
{
    for (const ScreenWindow &window : Screen::windows()) {
        if (window.title != title)
            continue;
        Screen::requestFocus(window.identifier);
        const auto isFocused = [&window] {
            const auto now = Screen::activeWindow();
            return now && now->identifier == window.identifier;
        };
        return QTest::qWaitFor(isFocused, PrivateDesktop::patience);
    }
    return false;
}

void GnomeScreen::showOverview(bool isShown)
{
    const QString shell = u"org.gnome.Shell"_s;
    call(shell, u"/org/gnome/Shell"_s, u"org.freedesktop.DBus.Properties"_s, u"Set"_s,
         {shell, u"OverviewActive"_s, QVariant::fromValue(QDBusVariant(isShown))});
}
