// SPDX-License-Identifier: Apache-2.0
// A desktop without a session bus.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

class AtspiNoBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nothingIsTrusted();
    void theErrorSaysWhatToDo();

private:
    AtspiBench m_bench;
};

void AtspiNoBusTest::initTestCase()
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
}

void AtspiNoBusTest::nothingIsTrusted()
{
    QVERIFY(!Awaited::result(m_bench.accessibility.isProcessTrusted()));
}

void AtspiNoBusTest::theErrorSaysWhatToDo()
{
    const QString sentence = u"The desktop's accessibility service can't be reached. Install at-spi2-core, "
                             "then log in again."_s;
    QCOMPARE(AtspiBench::errorOf(m_bench.accessibility.applicationTree({1})), sentence);
    QCOMPARE(AtspiBench::errorOf(m_bench.accessibility.requestTrust()), sentence);
}

QTEST_GUILESS_MAIN(AtspiNoBusTest)
#include "NoBusTest.moc"
