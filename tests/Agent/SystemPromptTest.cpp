// SPDX-License-Identifier: Apache-2.0
#include "Agent/SystemPrompt.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class SystemPromptTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsExact()
    {
        QFile golden(QFINDTESTDATA("system-prompt.txt"));
        QVERIFY(golden.open(QIODevice::ReadOnly));
        const QByteArray expected = golden.readAll();
        QCOMPARE(expected.size(), 2330);
        QCOMPARE(SystemPrompt::textFor(PlatformWords::ofLinux()).toUtf8(), expected);
    }

    void onAMacItNamesTheMac()
    {
        QFile golden(QFINDTESTDATA("system-prompt.txt"));
        QVERIFY(golden.open(QIODevice::ReadOnly));
        QByteArray expected = golden.readAll();
        expected.replace("You operate a computer for the user", "You operate a Mac for the user");
        QCOMPARE(expected.size(), 2325);
        QCOMPARE(SystemPrompt::textFor(PlatformWords::ofMac()).toUtf8(), expected);
    }

    void theModelIsSentThatOfThisPlatform()
    {
        QCOMPARE(SystemPrompt::text(), SystemPrompt::textFor(PlatformWords::current()));
    }

    void theSameSiteStandsInAllFivePlaces() { QCOMPARE(SystemPrompt::text().count(u"bbc.com"_s), 5); }

    void thereIsNoLineBreakAfterTheLastLine() { QVERIFY(SystemPrompt::text().endsWith(u"in Brave.\"}"_s)); }
};

QTEST_GUILESS_MAIN(SystemPromptTest)
#include "SystemPromptTest.moc"
