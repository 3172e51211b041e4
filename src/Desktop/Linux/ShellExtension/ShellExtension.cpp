// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/ShellExtension/ShellExtension.h"

#include "Base/Text.h"
#include "Desktop/Linux/DBus/DBusReply.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusError>
#include <QMap>

#include <algorithm>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

const QString path = u"/org/orvane/Shell"_s;

// In X11's mask: Shift, Control, Alt, Super and AltGr. Locks and buttons are none.
constexpr std::uint32_t modifierMask = 1U << 0 | 1U << 2 | 1U << 3 | 1U << 6 | 1U << 7;
constexpr std::uint32_t capsLockMask = 1U << 1;

// The shell numbers windows whose application it doesn't know: "window:7".
QString entryIdentifier(const QString &application)
{
    const QString suffix = u".desktop"_s;
    return application.endsWith(suffix) ? application.chopped(suffix.size()) : QString();
}

DesktopWindow windowFrom(const QVariantMap &values)
{
    DesktopWindow window;
    window.identifier = values.value(u"identifier"_s).toUInt();
    window.title = Text::cleaned(values.value(u"title"_s).toString());
    window.className = values.value(u"className"_s).toString();
    window.instance = values.value(u"instance"_s).toString();
    window.sandbox = values.value(u"sandbox"_s).toString();
    window.applicationIdentifier = entryIdentifier(values.value(u"application"_s).toString());
    window.transientFor = values.value(u"transientFor"_s).toUInt();
    window.kind = values.value(u"kind"_s).toString() == "dialog"_L1 ? DesktopWindow::Kind::Dialog
                                                                    : DesktopWindow::Kind::Application;
    window.isMinimised = values.value(u"isMinimised"_s).toBool();
    window.isModal = values.value(u"isModal"_s).toBool();
    window.isOnCurrentDesktop = values.value(u"isOnCurrentDesktop"_s).toBool();
    window.belongsInTaskBar = values.value(u"belongsInTaskBar"_s).toBool();
    window.canBeClosed = values.value(u"canBeClosed"_s).toBool();
    return window;
}

// Of the windows that have been used, latest first.
QList<std::uint32_t> byRecency(const QList<QVariantMap> &windows)
{
    QMap<int, std::uint32_t> ordered;
    for (const QVariantMap &window : windows) {
        const int recency = window.value(u"recency"_s).toInt();
        if (recency >= 0)
            ordered.insert(recency, window.value(u"identifier"_s).toUInt());
    }
    return ordered.values();
}

QString sentenceFor(const QDBusMessage &error)
{
    const QString name = error.errorName();
    if (name == QDBusError::errorString(QDBusError::ServiceUnknown))
        return u"Orvane's extension of GNOME Shell isn't running."_s;
    if (name == QDBusError::errorString(QDBusError::NoReply))
        return u"GNOME Shell doesn't answer."_s;
    return u"GNOME Shell says: %1"_s.arg(Text::cleaned(error.errorMessage()));
}

} // namespace

qint64 ShellExtension::processOf(const QVariantMap &window)
{
    const qint64 process = window.value(u"process"_s).toLongLong();
    return process > 0 ? process : m_unknownProcesses.of(window.value(u"className"_s).toString());
}

WindowSnapshot ShellExtension::snapshotFrom(const QList<QVariantMap> &frontToBack)
{
    WindowSnapshot snapshot;
    snapshot.recentlyActivated = byRecency(frontToBack);
    for (const QVariantMap &values : frontToBack) {
        DesktopWindow window = windowFrom(values);
        window.process = processOf(values);
        snapshot.windows.append(window);
        snapshot.stacking.append(window.identifier);
        if (values.value(u"isActive"_s).toBool())
            snapshot.activeWindow = window.identifier;
    }
    // The shell numbers windows in the order in which they open.
    std::sort(snapshot.windows.begin(), snapshot.windows.end(),
              [](const DesktopWindow &left, const DesktopWindow &right) {
                  return left.identifier < right.identifier;
              });
    return snapshot;
}

QCoro::Task<QDBusMessage> ShellExtension::ask(QString method, QVariantList arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(busName, path, busName, method);
    call.setArguments(arguments);
    const QFuture<QDBusMessage> reply =
        DBusReply::of(QDBusConnection::sessionBus().asyncCall(call, int(Deadlines::answer.count())));
    const QDBusMessage answer = co_await reply;
    if (answer.type() != QDBusMessage::ReplyMessage)
        throw PlatformError(sentenceFor(answer));
    co_return answer;
}

QCoro::Task<WindowSnapshot> ShellExtension::windows()
{
    const QVariantList nothing;
    const QDBusMessage answer = co_await ask(u"Windows"_s, nothing);
    co_return snapshotFrom(qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0)));
}

QCoro::Task<void> ShellExtension::activate(std::uint32_t window)
{
    const QVariantList arguments{window};
    co_await ask(u"Activate"_s, arguments);
}

QCoro::Task<void> ShellExtension::close(std::uint32_t window)
{
    const QVariantList arguments{window};
    co_await ask(u"Close"_s, arguments);
}

QCoro::Task<ShellExtension::Entry> ShellExtension::enterText(std::uint32_t window, QString text)
{
    const QVariantList arguments{window, text};
    const QDBusMessage answer = co_await ask(u"EnterText"_s, arguments);
    const QString result = answer.arguments().value(0).toString();
    if (result == "entered"_L1)
        co_return Entry::Entered;
    if (result == "sent"_L1)
        co_return Entry::Sent;
    co_return result == "no text field"_L1 ? Entry::NoTextField : Entry::NoFocus;
}

QCoro::Task<ShellExtension::Keys> ShellExtension::keys()
{
    const QVariantList nothing;
    const QDBusMessage answer = co_await ask(u"Keyboard"_s, nothing);
    const QVariantMap state = qdbus_cast<QVariantMap>(answer.arguments().value(0));
    const std::uint32_t modifiers = state.value(u"modifiers"_s).toUInt();
    Keys keys;
    keys.isModifierHeld = (modifiers & modifierMask) != 0;
    keys.isCapsLockOn = (modifiers & capsLockMask) != 0;
    keys.group = state.value(u"group"_s).toUInt();
    keys.areComposed = state.value(u"composes"_s).toBool();
    co_return keys;
}
