// SPDX-License-Identifier: Apache-2.0
#include "Base/PlatformWords.h"

#include <QTest>

using namespace Qt::StringLiterals;

class PlatformWordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextIsExact_data();
    void everyTextIsExact();
    void currentWordsAreThePlatforms();
};

void PlatformWordsTest::everyTextIsExact_data()
{
    QTest::addColumn<QString>("word");
    QTest::addColumn<QString>("expected");
    const PlatformWords &mac = PlatformWords::ofMac();
    const PlatformWords &here = PlatformWords::ofLinux();
    QTest::newRow("placeholder, macOS") << mac.placeholder << u"Tell your Mac what to do…"_s;
    QTest::newRow("placeholder, Linux") << here.placeholder << u"Tell your computer what to do…"_s;
    QTest::newRow("setup, macOS")
        << mac.setupExplanation
        << u"Orvane runs a language model entirely on your Mac. The one-time download is stored locally; nothing you type ever leaves this device."_s;
    QTest::newRow("setup, Linux")
        << here.setupExplanation
        << u"Orvane runs a language model entirely on your computer. The one-time download is stored locally; nothing you type ever leaves this device."_s;
    QTest::newRow("prompt, macOS")
        << mac.promptIntroduction
        << u"You operate a Mac for the user by emitting ONE JSON action at a time. Reply with only a JSON object, no prose."_s;
    QTest::newRow("prompt, Linux")
        << here.promptIntroduction
        << u"You operate a computer for the user by emitting ONE JSON action at a time. Reply with only a JSON object, no prose."_s;
    QTest::newRow("keys, macOS")
        << mac.keysRefusal
        << u"Accessibility permission is required. Enable Orvane in System Settings → Privacy & Security → Accessibility, then try again."_s;
    QTest::newRow("keys, Linux")
        << here.keysRefusal
        << u"Accessibility permission is required. Switch on accessibility in this desktop's settings, then try again."_s;
    QTest::newRow("typing, macOS")
        << mac.typingRefusal
        << u"Accessibility permission is required to type. Enable it in System Settings → Privacy & Security → Accessibility."_s;
    QTest::newRow("typing, Linux")
        << here.typingRefusal
        << u"Accessibility permission is required to type. Switch on accessibility in this desktop's settings."_s;
    QTest::newRow("controls, macOS")
        << mac.controlsRefusal
        << u"Accessibility permission is required. Enable it in System Settings → Privacy & Security → Accessibility."_s;
    QTest::newRow("controls, Linux")
        << here.controlsRefusal
        << u"Accessibility permission is required. Switch on accessibility in this desktop's settings."_s;
    QTest::newRow("screenshot, macOS")
        << mac.screenshotFailure << u"The screenshot failed. Screen Recording permission may be required."_s;
    QTest::newRow("screenshot, Linux")
        << here.screenshotFailure
        << u"The screenshot failed. The folder may be missing or write-protected."_s;
    QTest::newRow("deleting, macOS") << mac.deleteKeys << u"⌘⌫"_s;
    QTest::newRow("deleting, Linux") << here.deleteKeys << u"Ctrl+Backspace"_s;
    QTest::newRow("quitting, macOS") << mac.quitKeys << u"⌘Q"_s;
    QTest::newRow("quitting, Linux") << here.quitKeys << u"Ctrl+Q"_s;
}

void PlatformWordsTest::everyTextIsExact()
{
    QFETCH(QString, word);
    QTEST(word, "expected");
}

void PlatformWordsTest::currentWordsAreThePlatforms()
{
    const bool isMac = QSysInfo::productType() == u"macos"_s;
    const PlatformWords &expected = isMac ? PlatformWords::ofMac() : PlatformWords::ofLinux();
    QCOMPARE(&PlatformWords::current(), &expected);
}

QTEST_GUILESS_MAIN(PlatformWordsTest)
#include "PlatformWordsTest.moc"
