// SPDX-License-Identifier: Apache-2.0
// Each reply on D-Bus is delivered once.
#include "Desktop/Linux/DBus/DBusReply.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

class DBusReplyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aCallThatFinishesTwiceIsDeliveredOnce()
    {
        const auto call =
            QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, u"The bus has gone."_s));
        auto *watcher = new QDBusPendingCallWatcher(call);
        const QPointer<QDBusPendingCallWatcher> alive(watcher);
        QStringList delivered;
        DBusReply::deliver(watcher,
                           [&delivered](const QDBusMessage &reply) { delivered << reply.errorMessage(); });
        Q_EMIT watcher->finished(watcher);
        Q_EMIT watcher->finished(watcher);
        QTRY_VERIFY(!alive);
        QCOMPARE(delivered, QStringList{u"The bus has gone."_s});
    }

    void aCallThatHasEndedHasItsReplyAtOnce()
    {
        const QDBusMessage question = QDBusMessage::createMethodCall(u"a.b"_s, u"/"_s, u"a.b"_s, u"Ask"_s);
        const auto call = QDBusPendingCall::fromCompletedCall(question.createReply(u"yes"_s));
        const QFuture<QDBusMessage> reply = DBusReply::of(call);
        QVERIFY(reply.isFinished());
        QCOMPARE(reply.result().arguments(), QVariantList{u"yes"_s});
    }

    void aCallWithoutAConnectionEndsWithAnError()
    {
        const QDBusConnection none(u"no connection has this name"_s);
        const QDBusMessage question = QDBusMessage::createMethodCall(u"a.b"_s, u"/"_s, u"a.b"_s, u"Ask"_s);
        const QFuture<QDBusMessage> reply = DBusReply::of(none.asyncCall(question));
        QVERIFY(reply.isFinished());
        QCOMPARE(reply.result().type(), QDBusMessage::ErrorMessage);
    }
};

QTEST_GUILESS_MAIN(DBusReplyTest)
#include "DBusReplyTest.moc"
