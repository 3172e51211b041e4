// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/States.h"

#include "Desktop/Linux/Atspi/Protocol.h"

#include <QDBusError>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QDBusMessage question()
{
    return QDBusMessage::createMethodCall(u":1.7"_s, u"/element"_s, u"org.a11y.atspi.Accessible"_s,
                                          u"GetState"_s);
}

} // namespace

class AtspiStatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anErrorHoldsNoState();
    void anAnswerOfAnotherShapeHoldsNoState();
    void everyStateIsOneBitOfAQuestion();
};

void AtspiStatesTest::anErrorHoldsNoState()
{
    const QDBusMessage reply = question().createErrorReply(QDBusError::UnknownObject, u"It is gone."_s);
    QVERIFY(!Atspi::hasState(reply, AtspiState::Showing));
}

void AtspiStatesTest::anAnswerOfAnotherShapeHoldsNoState()
{
    const QDBusMessage reply = question().createReply(QVariantList{u"showing"_s});
    QVERIFY(!Atspi::hasState(reply, AtspiState::Showing));
}

void AtspiStatesTest::everyStateIsOneBitOfAQuestion()
{
    QCOMPARE(Atspi::bitSet(QList<AtspiState>(), 2), (QList<int>{0, 0}));
    QCOMPARE(Atspi::bitSet(QList{AtspiState::Focused}, 2), (QList<int>{1 << 12, 0}));
    QCOMPARE(Atspi::bitSet(QList{AtspiState::Focused, AtspiState::Selected}, 2),
             (QList<int>{1 << 12 | 1 << 23, 0}));
}

QTEST_GUILESS_MAIN(AtspiStatesTest)
#include "StatesTest.moc"
