// SPDX-License-Identifier: Apache-2.0
// A session bus that takes connections and never says a word.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"
#include "Support/StandstillWatch.h"

#include <QLocalServer>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class AtspiSilentBusTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theEventLoopGoesOnWhileTheBusIsSilent();
};

void AtspiSilentBusTest::theEventLoopGoesOnWhileTheBusIsSilent()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"bus"_s);
    auto server = std::make_unique<QLocalServer>();
    QVERIFY(server->listen(path));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.toUtf8());

    AtspiBench bench;
    const StandstillWatch watch;
    QVERIFY(!Awaited::result(bench.accessibility.isProcessTrusted()));
    QCOMPARE(AtspiBench::errorOf(bench.accessibility.applicationTree(1)),
             u"The accessibility service doesn't answer."_s);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
    // The worker is let go, so that the end of the test need not wait for it.
    server.reset();
}

QTEST_GUILESS_MAIN(AtspiSilentBusTest)
#include "SilentBusTest.moc"
