// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Session/SocketProgramInstance.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Instances that share a folder. Locks taken by one process exclude each other like those of several
// processes.
class SocketProgramInstanceTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;

    QString path(const QString &name) const { return m_folder->filePath(name); }

    static InstanceStanding claim(ProgramInstance &instance,
                                  InstanceRequest request = InstanceRequest::Activate)
    {
        return Awaited::result(instance.claim(request));
    }

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void theFirstStartIsTheInstance()
    {
        SocketProgramInstance instance(path(u"missing/folder"_s));
        QCOMPARE(claim(instance), InstanceStanding::First);
        QCOMPARE(instance.launchToken(), QString());
    }

    void aLaterStartForwardsItsRequest_data()
    {
        QTest::addColumn<InstanceRequest>("request");
        QTest::addColumn<int>("activations");
        QTest::addColumn<int>("toggles");
        QTest::newRow("activate") << InstanceRequest::Activate << 1 << 0;
        QTest::newRow("toggle") << InstanceRequest::Toggle << 0 << 1;
        QTest::newRow("nothing") << InstanceRequest::Nothing << 0 << 0;
    }

    void aLaterStartForwardsItsRequest()
    {
        QFETCH(InstanceRequest, request);
        SocketProgramInstance first(m_folder->path());
        SocketProgramInstance second(m_folder->path());
        const QSignalSpy activated(&first, &ProgramInstance::activated);
        const QSignalSpy toggled(&first, &ProgramInstance::toggleRequested);
        QCOMPARE(claim(first), InstanceStanding::First);
        QCOMPARE(claim(second, request), InstanceStanding::Later);
        QTEST(int(activated.size()), "activations");
        QTEST(int(toggled.size()), "toggles");
    }

    void everyLaterStartIsReceived()
    {
        SocketProgramInstance first(m_folder->path());
        const QSignalSpy toggled(&first, &ProgramInstance::toggleRequested);
        QCOMPARE(claim(first), InstanceStanding::First);
        for (int start = 1; start <= 3; ++start) {
            SocketProgramInstance later(m_folder->path());
            QCOMPARE(claim(later, InstanceRequest::Toggle), InstanceStanding::Later);
            QCOMPARE(toggled.size(), start);
        }
    }

    void theNextStartAfterTheEndIsTheInstance()
    {
        auto first = std::make_unique<SocketProgramInstance>(m_folder->path());
        QCOMPARE(claim(*first), InstanceStanding::First);
        first.reset();
        SocketProgramInstance next(m_folder->path());
        QCOMPARE(claim(next), InstanceStanding::First);
    }

    void leftoversOfACrashAreNoObstacle()
    {
        QFile lock(path(u"instance.lock"_s));
        QVERIFY(lock.open(QFile::WriteOnly));
        lock.close();
        // A crash leaves the socket file behind.
        QLocalServer abandoned;
        QVERIFY(abandoned.listen(path(u"abandoned"_s)));
        QVERIFY(QFile::rename(path(u"abandoned"_s), path(u"instance.socket"_s)));
        SocketProgramInstance first(m_folder->path());
        QCOMPARE(claim(first), InstanceStanding::First);
        SocketProgramInstance second(m_folder->path());
        QCOMPARE(claim(second), InstanceStanding::Later);
    }

    void anInstanceThatDoesNotAnswerIsAnError()
    {
        SocketProgramInstance first(m_folder->path());
        QCOMPARE(claim(first), InstanceStanding::First);
        // Replace its socket with one that accepts connections but never replies.
        QVERIFY(QFile::remove(path(u"instance.socket"_s)));
        QLocalServer silent;
        QVERIFY(silent.listen(path(u"instance.socket"_s)));
        SocketProgramInstance second(m_folder->path());
        try {
            claim(second);
            QFAIL("The claim succeeded");
        } catch (const PlatformError &error) {
            QCOMPARE(error.errorDescription(), u"Orvane is already running, but doesn't answer."_s);
        }
    }

    void unknownRequestsAreIgnored()
    {
        SocketProgramInstance first(m_folder->path());
        const QSignalSpy activated(&first, &ProgramInstance::activated);
        const QSignalSpy toggled(&first, &ProgramInstance::toggleRequested);
        QCOMPARE(claim(first), InstanceStanding::First);
        QLocalSocket caller;
        caller.connectToServer(path(u"instance.socket"_s));
        QVERIFY(caller.waitForConnected());
        caller.write("?");
        QTRY_COMPARE(caller.bytesAvailable(), 1);
        caller.abort();
        SocketProgramInstance second(m_folder->path());
        QCOMPARE(claim(second), InstanceStanding::Later);
        QCOMPARE(activated.size(), 1);
        QCOMPARE(toggled.size(), 0);
    }
};

QTEST_GUILESS_MAIN(SocketProgramInstanceTest)
#include "SocketProgramInstanceTest.moc"
