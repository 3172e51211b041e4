// SPDX-License-Identifier: Apache-2.0
// A program watched from outside: its standstills are recorded, its start is not.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class StandstillGuardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standstillsAreWrittenDown_data();
    void standstillsAreWrittenDown();
};

namespace {

QByteArrayList linesAfterRunning(const QStringList &sleeps)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"standstills"_s);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(STANDSTILL_GUARD));
    environment.insert(u"ORVANE_STANDSTILLS"_s, path);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(STANDSTILL_SAMPLE), sleeps);
    if (!program.waitForFinished(60000) || program.exitCode() != 0)
        return {"no end"};
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().split('\n') : QByteArrayList();
}

} // namespace

void StandstillGuardTest::standstillsAreWrittenDown_data()
{
    QTest::addColumn<QStringList>("sleeps");
    QTest::addColumn<qsizetype>("count");
    QTest::newRow("none") << QStringList{u"0"_s, u"0"_s} << qsizetype(0);
    QTest::newRow("before there is a window") << QStringList{u"300"_s, u"0"_s} << qsizetype(0);
    QTest::newRow("with a window") << QStringList{u"0"_s, u"300"_s} << qsizetype(1);
}

void StandstillGuardTest::standstillsAreWrittenDown()
{
    QFETCH(QStringList, sleeps);
    QByteArrayList lines = linesAfterRunning(sleeps);
    QCOMPARE(lines.value(0), "watching");
    lines.removeFirst();
    QTEST(lines.size(), "count");
    for (const QByteArray &line : lines)
        QVERIFY2(line.toInt() > 50, line.constData());
}

QTEST_GUILESS_MAIN(StandstillGuardTest)
#include "StandstillGuardTest.moc"
