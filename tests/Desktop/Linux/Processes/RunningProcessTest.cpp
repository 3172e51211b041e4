// SPDX-License-Identifier: Apache-2.0
// What a process is doing.
#include "Desktop/Linux/Processes/RunningProcess.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class RunningProcessTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aProcessThatComputesIsBusy()
    {
        QProcess process;
        process.start(u"/bin/sh"_s, {u"-c"_s, u"while :; do :; done"_s});
        QTRY_VERIFY(isBusyProcess(process.processId()));
        for (int look = 0; look < 20; ++look)
            QVERIFY(isBusyProcess(process.processId()));
        process.kill();
        process.waitForFinished();
    }

    void aProcessThatWaitsIsNot()
    {
        QProcess process;
        process.start(u"/bin/cat"_s, {});
        QTRY_VERIFY(!isBusyProcess(process.processId()));
        for (int look = 0; look < 20; ++look)
            QVERIFY(!isBusyProcess(process.processId()));
        process.closeWriteChannel();
        process.waitForFinished();
    }

    void noProcessIsNot()
    {
        QVERIFY(!isBusyProcess(0));
        QVERIFY(!isBusyProcess(-1));
    }

    void aProcessIsFoundByItsProgramAndByItsScript()
    {
        QTemporaryDir folder;
        QFile script(folder.filePath(u"Sample.sh"_s));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("read line\n");
        script.close();
        QProcess process;
        process.start(u"/bin/sh"_s, {script.fileName()});
        for (const QString &name : {u"sample.sh"_s, u"sh"_s})
            QTRY_VERIFY(processesRunning({name}).contains(process.processId()));
        QCOMPARE(processesRunning({u"sample.sh"_s}), QList{process.processId()});
        for (const QString &name : {u"sample"_s, QString()})
            QVERIFY(!processesRunning({name}).contains(process.processId()));
        process.closeWriteChannel();
        process.waitForFinished();
        QCOMPARE(processesRunning({u"sample.sh"_s}), QList<qint64>());
    }
};

QTEST_GUILESS_MAIN(RunningProcessTest)
#include "RunningProcessTest.moc"
