// SPDX-License-Identifier: Apache-2.0
// What differs in a session with sway from X11: the window floats though sway tiles windows by default, and
// it is activated with a token.
#include "applications/support/SwayScreen.h"
#include "ui/support/UiTest.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr QRect screenArea(0, 0, 1280, 800);
constexpr QSize firstSize(720, 620);

} // namespace

class UiSwayTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowFloatsInTheMiddleWithTheFocus();
    void theFloatingWindowCanBeResized();
    void theFocusReturnsToTheWindowBefore();
    void aSecondStartsTokenActivatesTheWindow();
    void itIsAWindowOfSwayEvenWithAnXServer();

private:
    bool isInTheMiddle(QSize size);
};

bool UiSwayTest::isInTheMiddle(QSize size)
{
    const auto window = orvane().window();
    if (!window || window->area.size() != size)
        return false;
    const QPoint offset = window->area.center() - screenArea.center();
    return qAbs(offset.x()) <= 1 && qAbs(offset.y()) <= 1;
}

void UiSwayTest::theWindowFloatsInTheMiddleWithTheFocus()
{
    QVERIFY(orvane().startShown());
    VERIFY_SOON(isInTheMiddle(firstSize));
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
        QVERIFY(orvane().waitForHidden());
        QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
        QVERIFY(orvane().waitForActive());
        VERIFY_SOON(isInTheMiddle(firstSize));
    }
}

void UiSwayTest::theFloatingWindowCanBeResized()
{
    QVERIFY(orvane().startShown());
    SwayScreen::command({u"[app_id=org.orvane.Orvane]"_s, u"resize"_s, u"set"_s, u"900"_s, u"700"_s});
    VERIFY_SOON(orvane().window()->area.size() == QSize(900, 700));
    SwayScreen::command({u"[app_id=org.orvane.Orvane]"_s, u"resize"_s, u"set"_s, u"100"_s, u"100"_s});
    VERIFY_SOON(orvane().window()->area.size() == QSize(640, 460));
}

void UiSwayTest::theFocusReturnsToTheWindowBefore()
{
    QVERIFY(orvane().startShown());
    QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
    QVERIFY(orvane().waitForHidden());
    QVERIFY(PrivateDesktop::open(u"gnome-calculator"_s, {}, u"gnome-calculator"_s));
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
        QVERIFY(orvane().waitForActive());
        QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
        QVERIFY(orvane().waitForHidden());
        VERIFY_SOON(Screen::activeClass() == u"Mousepad"_s);
    }
}

// sway accepts any token; what the program asks of sway is in the protocol's log.
void UiSwayTest::aSecondStartsTokenActivatesTheWindow()
{
    const QString log = PrivateDesktop::home(u"protocol.log"_s);
    orvane().setVariable(u"WAYLAND_DEBUG"_s, u"client"_s);
    orvane().setErrorFile(log);
    QVERIFY(orvane().startShown());
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    orvane().setVariable(u"WAYLAND_DEBUG"_s, {});
    orvane().setErrorFile({});
    orvane().setVariable(u"XDG_ACTIVATION_TOKEN"_s, u"token-of-the-key"_s);
    QCOMPARE(orvane().startOnceMore({u"--toggle"_s}), 0);
    QVERIFY(orvane().waitForActive());
    const auto isSent = [&log] {
        return PrivateDesktop::read(log).contains(".activate(\"token-of-the-key\"");
    };
    VERIFY_SOON(isSent());
}

void UiSwayTest::itIsAWindowOfSwayEvenWithAnXServer()
{
    QProcess server;
    server.start(u"Xwayland"_s, {u"-displayfd"_s, u"1"_s, u"-rootless"_s, u"-noreset"_s});
    QByteArray number;
    const auto isUp = [&] { return (number += server.readAllStandardOutput()).endsWith('\n'); };
    VERIFY_SOON(isUp());
    orvane().setVariable(u"DISPLAY"_s, u':' + QString::fromLatin1(number.trimmed()));
    orvane().setVariable(u"QT_QPA_PLATFORM"_s, {});
    QVERIFY(orvane().startShown());
    QCOMPARE(orvane().window()->applicationIdentifier, u"org.orvane.Orvane"_s);
    server.terminate();
    QVERIFY(server.waitForFinished());
    QVERIFY(orvane().isRunning());
}

QTEST_GUILESS_MAIN(UiSwayTest)
#include "SwayTest.moc"
