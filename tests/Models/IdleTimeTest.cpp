// SPDX-License-Identifier: Apache-2.0
#include "Models/IdleTime.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using IdleTime::Minutes;

class IdleTimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void machinesWithMuchMemoryKeepTheModel();
    void textsAreRead();
    void wrongTextsAreRefused_data();
    void wrongTextsAreRefused();
    void aChoiceLasts();
    void aDamagedChoiceCountsAsNone();
    void settingsThatCannotBeWrittenAreReported();

private:
    ModelStorage storage() const { return {m_folder.path(), m_folder.filePath(u"Orvane.conf"_s)}; }

    QTemporaryDir m_folder;
};

void IdleTimeTest::machinesWithMuchMemoryKeepTheModel()
{
    QCOMPARE(IdleTime::standard(8'000'000'000), Minutes(15min));
    QCOMPARE(IdleTime::standard(16'000'000'000), Minutes());
    // 16 GiB, of which a graphics unit has 2.
    QCOMPARE(IdleTime::standard(14LL << 30), Minutes());
    QCOMPARE(IdleTime::standard(std::nullopt), Minutes());
}

void IdleTimeTest::textsAreRead()
{
    QCOMPARE(IdleTime::parsed(u"always"_s).value(), Minutes());
    QCOMPARE(IdleTime::parsed(u"1"_s).value(), Minutes(1min));
    QCOMPARE(IdleTime::parsed(u"10080"_s).value(), Minutes(10080min));
}

void IdleTimeTest::wrongTextsAreRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : {u""_s, u"0"_s, u"-1"_s, u"10081"_s, u"99999999999"_s, u"5 min"_s, u"never"_s})
        QTest::newRow(qPrintable(u"“%1”"_s.arg(text))) << text;
}

void IdleTimeTest::wrongTextsAreRefused()
{
    QFETCH(QString, text);
    QVERIFY(!IdleTime::parsed(text));
}

void IdleTimeTest::aChoiceLasts()
{
    QVERIFY(IdleTime::choose(storage(), 7min));
    QCOMPARE(IdleTime::chosen(storage()), Minutes(7min));
    QVERIFY(IdleTime::choose(storage(), {}));
    QCOMPARE(IdleTime::chosen(storage()), Minutes());
}

void IdleTimeTest::aDamagedChoiceCountsAsNone()
{
    QFile file(storage().settingsFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[General]\nkeepIdleModel=soon\n");
    file.close();
    const Minutes damaged = IdleTime::chosen(storage());
    QVERIFY(QFile::remove(storage().settingsFile));
    QCOMPARE(damaged, IdleTime::chosen(storage()));
}

void IdleTimeTest::settingsThatCannotBeWrittenAreReported()
{
    QVERIFY(!IdleTime::choose({m_folder.path(), u"/proc/none/Orvane.conf"_s}, 7min));
}

QTEST_GUILESS_MAIN(IdleTimeTest)
#include "IdleTimeTest.moc"
