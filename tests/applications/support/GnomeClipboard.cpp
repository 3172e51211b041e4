// SPDX-License-Identifier: Apache-2.0
#include "applications/support/GnomeClipboard.h"

#include "applications/support/PrivateDesktop.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QTest>
#include <QVariantMap>

#include <future>
#include <thread>

#include <fcntl.h>

using namespace Qt::StringLiterals;

namespace {

const QString service = u"org.gnome.Mutter.RemoteDesktop"_s;

// A session of the compositor's for remote desktops, which sees the clipboard without having the focus.
class Session : public QObject
{
    Q_OBJECT

public:
    Session();

    QDBusMessage call(const QString &method, const QVariantList &arguments = {});
    void copy(const QMap<QString, QByteArray> &content);
    QByteArray content(const QString &format);

    QMap<QString, QByteArray> copied;
    QStringList formats;
    bool isOwner = false;
    bool isHandedOut = true;

private Q_SLOTS:
    void changeOwner(const QVariantMap &change);
    void transfer(const QString &format, uint serial);

private:
    QString m_path;
};

Session::Session()
{
    QDBusMessage creation = QDBusMessage::createMethodCall(service, u"/org/gnome/Mutter/RemoteDesktop"_s,
                                                           service, u"CreateSession"_s);
    const QDBusMessage created = QDBusConnection::sessionBus().call(creation);
    m_path = created.arguments().value(0).value<QDBusObjectPath>().path();
    const QString interface = service + u".Session"_s;
    QDBusConnection::sessionBus().connect(service, m_path, interface, u"SelectionOwnerChanged"_s, this,
                                          SLOT(changeOwner(QVariantMap)));
    QDBusConnection::sessionBus().connect(service, m_path, interface, u"SelectionTransfer"_s, this,
                                          SLOT(transfer(QString, uint)));
    call(u"Start"_s);
    call(u"EnableClipboard"_s, {QVariantMap()});
}

QDBusMessage Session::call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, m_path, service + u".Session"_s, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

void Session::changeOwner(const QVariantMap &change)
{
    isOwner = change.value(u"session-is-owner"_s).toBool();
    formats.clear();
    const auto types = change.value(u"mime-types"_s).value<QDBusArgument>();
    if (types.currentType() != QDBusArgument::StructureType)
        return;
    types.beginStructure();
    types >> formats;
    types.endStructure();
}

void Session::transfer(const QString &format, uint serial)
{
    if (!isHandedOut)
        return;
    const QDBusMessage answer = call(u"SelectionWrite"_s, {serial});
    const auto descriptor = answer.arguments().value(0).value<QDBusUnixFileDescriptor>();
    // Who reads may be this program.
    std::thread([this, descriptor, serial, data = copied.value(format)] {
        QFile pipe;
        const bool isWritten =
            pipe.open(descriptor.fileDescriptor(), QIODevice::WriteOnly) && pipe.write(data) == data.size();
        pipe.close();
        call(u"SelectionWriteDone"_s, {serial, isWritten});
    }).detach();
}

void Session::copy(const QMap<QString, QByteArray> &content)
{
    copied = content;
    // A content that the desktop doesn't keep must go before an empty one.
    const QStringList types = content.isEmpty() ? QStringList{u"application/x-nothing"_s} : content.keys();
    isOwner = false;
    call(u"SetSelection"_s, {QVariantMap{{u"mime-types"_s, types}}});
    if (!QTest::qWaitFor([this] { return isOwner; }, PrivateDesktop::patience))
        qFatal("the desktop takes no clipboard");
    if (content.isEmpty())
        call(u"SetSelection"_s, {QVariantMap()});
}

QByteArray Session::content(const QString &format)
{
    const QDBusMessage answer = call(u"SelectionRead"_s, {format});
    // The session can't read from itself.
    if (answer.type() == QDBusMessage::ErrorMessage)
        return copied.value(format);
    const auto descriptor = answer.arguments().value(0).value<QDBusUnixFileDescriptor>();
    auto reading = std::async(std::launch::async, [descriptor] {
        QFile pipe;
        fcntl(descriptor.fileDescriptor(), F_SETFL, 0); // waits for data
        return pipe.open(descriptor.fileDescriptor(), QIODevice::ReadOnly) ? pipe.readAll() : QByteArray();
    });
    const auto isRead = [&reading] {
        return reading.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    return QTest::qWaitFor(isRead, PrivateDesktop::patience) ? reading.get() : QByteArray();
}

Session &session()
{
    static Session session;
    return session;
}

} // namespace

void GnomeClipboard::copy(const QMap<QString, QByteArray> &content)
{
    session().copy(content);
}

void GnomeClipboard::setHandedOut(bool isHandedOut)
{
    session().isHandedOut = isHandedOut;
}

QStringList GnomeClipboard::formats()
{
    QCoreApplication::processEvents();
    return session().formats;
}

QByteArray GnomeClipboard::content(const QString &format)
{
    return session().content(format);
}

#include "GnomeClipboard.moc"
