// SPDX-License-Identifier: Apache-2.0
#include "Base/SystemMemory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class SystemMemoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void isWhatTheSystemSays();
    void isUnknownWithoutTheSystemsWord();
    void isLimitedByControlGroups_data();
    void isLimitedByControlGroups();
#ifdef Q_OS_LINUX
    void isKnownHere();
#endif

private:
    void write(const QString &path, const QByteArray &content);
    std::optional<qint64> available() const
    {
        return SystemMemory::available(m_root->path());
    }
    std::optional<qint64> total() const
    {
        return SystemMemory::total(m_root->path());
    }

    std::unique_ptr<QTemporaryDir> m_root;
};

void SystemMemoryTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
}

void SystemMemoryTest::write(const QString &path, const QByteArray &content)
{
    const QString full = m_root->filePath(path);
    QDir().mkpath(QFileInfo(full).path());
    QFile file(full);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void SystemMemoryTest::isWhatTheSystemSays()
{
    write(u"proc/meminfo"_s, "MemTotal:  900 kB\nMemFree:  10 kB\nMemAvailable:     200 kB\n");
    QCOMPARE(available(), 200 * 1024);
    QCOMPARE(total(), 900 * 1024);
}

void SystemMemoryTest::isUnknownWithoutTheSystemsWord()
{
    QCOMPARE(available(), std::nullopt);
    QCOMPARE(total(), std::nullopt);
    write(u"proc/meminfo"_s, "MemTotal:\nMemAvailable: much\n");
    QCOMPARE(available(), std::nullopt);
    QCOMPARE(total(), std::nullopt);
}

void SystemMemoryTest::isLimitedByControlGroups_data()
{
    QTest::addColumn<QByteArray>("outer");
    QTest::addColumn<QByteArray>("inner");
    QTest::addColumn<qint64>("expected");
    QTest::newRow("no limit") << QByteArray("max") << QByteArray("max") << qint64(200 * 1024);
    QTest::newRow("a limit") << QByteArray("max") << QByteArray("5000") << qint64(5000 - 1000 + 300);
    QTest::newRow("a limit further out")
        << QByteArray("4000") << QByteArray("max") << qint64(4000 - 1000 + 300);
    QTest::newRow("two limits") << QByteArray("4000") << QByteArray("5000") << qint64(4000 - 1000 + 300);
    QTest::newRow("exhausted") << QByteArray("max") << QByteArray("500") << qint64(0);
    QTest::newRow("more than the system has")
        << QByteArray("max") << QByteArray("900000000") << qint64(200 * 1024);
}

void SystemMemoryTest::isLimitedByControlGroups()
{
    QFETCH(QByteArray, outer);
    QFETCH(QByteArray, inner);
    write(u"proc/meminfo"_s, "MemAvailable: 200 kB\n");
    write(u"proc/self/cgroup"_s, "3:pids:/old\n0::/user.slice/app.scope\n");
    for (const auto &[group, limit] :
         {std::pair(u"user.slice"_s, outer), {u"user.slice/app.scope"_s, inner}}) {
        const QString folder = u"sys/fs/cgroup/"_s + group;
        write(folder + u"/memory.max"_s, limit + '\n');
        write(folder + u"/memory.current"_s, "1000\n");
        write(folder + u"/memory.stat"_s, "anon 500\ninactive_file 300\nactive_file 100\n");
    }
    QTEST(available().value(), "expected");
}

#ifdef Q_OS_LINUX
void SystemMemoryTest::isKnownHere()
{
    QVERIFY(SystemMemory::available().value() > 0);
    QVERIFY(SystemMemory::total().value() >= SystemMemory::available().value());
}
#endif

QTEST_GUILESS_MAIN(SystemMemoryTest)
#include "SystemMemoryTest.moc"
