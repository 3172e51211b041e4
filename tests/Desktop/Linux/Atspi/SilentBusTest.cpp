// SPDX-License-Identifier: Apache-2.0
// A session bus that accepts connections but never replies.
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
    void aSilentBusNeverBlocksTheEventLoop();
};

void AtspiSilentBusTest::aSilentBusNeverBlocksTheEventLoop()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"bus"_s);
    auto server = std::make_unique<QLocalServer>();
    QVERIFY(server->listen(path));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path.toUtf8());

    AtspiBench bench;
    const StandstillWatch watch;
    QVERIFY(!Awaited::result(bench.accessibility.isProcessTrusted()));
    QCOMPARE(AtspiBench::errorOf(bench.accessibility.applicationTree({1})),
             u"The accessibility service doesn't answer."_s);
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
    // Unblock the worker, so that the test can exit.
    server.reset();
}

QTEST_GUILESS_MAIN(AtspiSilentBusTest)
#include "SilentBusTest.moc"
