// SPDX-License-Identifier: Apache-2.0
// Typing on a real compositor, sway: what arrives in applications.
#include "Desktop/Linux/Wayland/Keyboard.h"
#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/ReceivedKeys.h"
#include "Desktop/Linux/Wayland/Toplevels.h"
#include "Desktop/SystemClock.h"
#include "Support/Awaited.h"
#include "applications/support/PrivateDesktop.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QRasterWindow>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using KeyStrokes::key;
using KeyStrokes::text;
using ReceivedKeys::eventsIn;
using ReceivedKeys::pressedKeys;
using ReceivedKeys::textIn;

namespace {

// The pieces of 20 characters in which the program types.
QList<KeyStroke> pieces(const QString &whole)
{
    QList<KeyStroke> strokes;
    for (qsizetype begin = 0; begin < whole.size(); begin += 20)
        strokes.append(text(whole.mid(begin, 20)));
    return strokes;
}

// sway knows the windows' processes.
QCoro::Task<QStringList> noPrograms(QString)
{
    co_return QStringList();
}

} // namespace

// A window of this program: the palette, or another application to the receiver.
class OwnWindow : public QRasterWindow
{
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent *) override { ++keys; }
};

class KeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void textArrivesAsWritten_data();
    void textArrivesAsWritten();
    void commandTArrivesAsControlT();
    void shortcutsDoNotDependOnTheUsersLayout();
    void modifiersThatTheUserHoldsDoNotChangeTheText();
    void aLongTextArrivesCompletelyAndInOrder();
    void aReloadOfSwayDoesNotChangeTheText();
    void aStruckKeyIsNotConfirmed();
    void keysNeverGoToOurOwnWindow();
    void keysNeverReachAnotherApplicationThanTheirReceiver();
    void withoutAnApplicationInFrontNothingIsSent();
    void untypableTextSendsNoKeys();
    void charactersThatTheApplicationCutsAreNotSent();
    void typingStopsWhenAnotherApplicationGetsTheFocus();
    void keysCanBeSent();

private:
    QCoro::Task<std::optional<DesktopWindow>> frontmostWindow();
    QCoro::Task<bool> takesEveryCharacter() { co_return m_takesEveryCharacter; }
    std::optional<RunningApplication> frontmostApplication();
    QString titleInFront();
    void startReceiver();
    QString post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause = 0us);
    // The receiver's output, once Return has been released.
    QByteArray receivedUntilReturn();

    SystemClock m_clock;
    WaylandConnection m_connection;
    WaylandToplevels m_windows{m_connection, &noPrograms, m_clock};
    bool m_takesEveryCharacter = true;
    WaylandKeyboard m_keyboard{m_connection, m_windows, [this] { return frontmostWindow(); },
                               [this](RunningApplication) { return takesEveryCharacter(); }, m_clock};
    QProcess m_receiver;
};

QCoro::Task<std::optional<DesktopWindow>> KeyboardTest::frontmostWindow()
{
    const WindowSnapshot now = co_await m_windows.snapshot();
    const DesktopWindow *window = now.frontmost(QCoreApplication::applicationPid());
    if (!window)
        co_return std::nullopt;
    co_return *window;
}

std::optional<RunningApplication> KeyboardTest::frontmostApplication()
{
    const std::optional<DesktopWindow> window = Awaited::result(frontmostWindow());
    if (!window)
        return std::nullopt;
    RunningApplication application;
    application.processIdentifier = window->process;
    application.localizedName = window->title;
    return application;
}

QString KeyboardTest::titleInFront()
{
    const WindowSnapshot now = Awaited::result(m_windows.snapshot());
    return now.active() ? now.active()->title : QString();
}

void KeyboardTest::startReceiver()
{
    m_receiver.start(QString::fromLatin1(KEY_RECEIVER), {u"Receiver"_s});
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), u"Receiver"_s, PrivateDesktop::patience);
}

QString KeyboardTest::post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause)
{
    return LinuxBench::errorOf(m_keyboard.post(strokes, pause, frontmostApplication()));
}

QByteArray KeyboardTest::receivedUntilReturn()
{
    QByteArray told;
    const auto look = [this, &told] {
        told += m_receiver.readAllStandardOutput();
        return told.contains("release 1000004");
    };
    return QTest::qWaitFor(look, PrivateDesktop::patience) ? told : QByteArray();
}

void KeyboardTest::initTestCase()
{
    QGuiApplication::setDesktopFileName(u"org.orvane.Test"_s);
    m_receiver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

void KeyboardTest::cleanup()
{
    m_receiver.kill();
    m_receiver.waitForFinished();
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), QString(), PrivateDesktop::patience);
}

void KeyboardTest::textArrivesAsWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << u" !\"#$%&'()*+,-./0189:;<=>?@AZ[\\]^_`az{|}~"_s;
    QTest::newRow("accents") << u"Été à Łódź, žluťoučký kůň, cafe\u0301"_s;
    QTest::newRow("Chinese") << u"天地玄黃宇宙洪荒日月盈昃辰宿列張寒來暑往秋收冬藏閏餘成歲律呂調陽"_s;
    QTest::newRow("emoji") << u"👍🏽 👩🏿‍🚀 🎉"_s;
    QTest::newRow("tab") << u"a\tb"_s;
}

void KeyboardTest::textArrivesAsWritten()
{
    QFETCH(const QString, text);
    startReceiver();
    QCOMPARE(post({KeyStrokes::text(text), KeyStrokes::text(u"\n"_s)}), QString());
    const QByteArray told = receivedUntilReturn();
    QCOMPARE(textIn(told), text + u'\r');
    QCOMPARE(pressedKeys(told), QList<int>());
}

void KeyboardTest::commandTArrivesAsControlT()
{
    startReceiver();
    QCOMPARE(post({key(17, EventFlag::Command), key(36)}), QString());
    const QByteArray told = receivedUntilReturn();
    QVERIFY2(told.contains("press 54 4000000"), told.constData());
    const QList<ReceivedKeys::Event> events = eventsIn(told);
    QCOMPARE(events.last().modifiers, 0);
    QCOMPARE(pressedKeys(told), QList<int>());
}

void KeyboardTest::shortcutsDoNotDependOnTheUsersLayout()
{
    startReceiver();
    const auto setLayout = [](const QString &layout) {
        return QProcess::execute(u"swaymsg"_s, {u"--quiet"_s, u"input"_s, u"type:keyboard"_s, u"xkb_layout"_s,
                                                layout}) == 0;
    };
    QVERIFY(setLayout(u"ru"_s));
    const QString failure = post({key(17, EventFlag::Command), text(u"Zyklus"_s), key(36)});
    const QByteArray told = receivedUntilReturn();
    QVERIFY(setLayout(u"us"_s));
    QCOMPARE(failure, QString());
    QVERIFY2(told.contains("press 54 4000000"), told.constData());
    QVERIFY2(textIn(told).endsWith(u"Zyklus\r"), told.constData());
}

void KeyboardTest::modifiersThatTheUserHoldsDoNotChangeTheText()
{
    startReceiver();
    QProcess user; // another keyboard, whose Shift is held for a minute
    user.start(u"wtype"_s, {u"-M"_s, u"shift"_s, u"-P"_s, u"Shift_L"_s, u"-s"_s, u"60000"_s});
    const auto isShiftHeld = [this] { return m_receiver.readAllStandardOutput().contains("press 1000020"); };
    QVERIFY(QTest::qWaitFor(isShiftHeld, PrivateDesktop::patience));
    QCOMPARE(post({text(u"abc\n"_s)}), QString());
    const QByteArray told = receivedUntilReturn();
    user.kill();
    user.waitForFinished();
    QCOMPARE(textIn(told), u"abc\r"_s);
    QVERIFY2(told.contains("press 41 0 61"), told.constData());
}

void KeyboardTest::aLongTextArrivesCompletelyAndInOrder()
{
    startReceiver();
    QString whole;
    for (int index = 0; index < 1000; ++index)
        whole += QString(QChar(u'一' + index)) + QChar(u'!' + index % 94);
    QCOMPARE(post(pieces(whole) + QList<KeyStroke>{key(36)}), QString());
    const QByteArray told = receivedUntilReturn();
    QCOMPARE(textIn(told), whole + u'\r');
    QCOMPARE(pressedKeys(told), QList<int>());
}

void KeyboardTest::aReloadOfSwayDoesNotChangeTheText()
{
    startReceiver();
    QCOMPARE(post({text(u"é"_s)}), QString());
    QCOMPARE(QProcess::execute(u"swaymsg"_s, {u"--quiet"_s, u"reload"_s}), 0);
    QCOMPARE(post({text(u"é\n"_s)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"éé\r"_s);
}

void KeyboardTest::aStruckKeyIsNotConfirmed()
{
    startReceiver();
    QVERIFY(!Awaited::result(m_keyboard.strike(36, *frontmostApplication())));
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void KeyboardTest::keysNeverGoToOurOwnWindow()
{
    startReceiver();
    OwnWindow palette;
    palette.setTitle(u"Palette"_s);
    palette.resize(300, 200);
    palette.show();
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), u"Palette"_s, PrivateDesktop::patience);
    QCOMPARE(post({text(u"private\n"_s)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"private\r"_s);
    QCOMPARE(titleInFront(), u"Receiver"_s);
    QCOMPARE(palette.keys, 0);
}

void KeyboardTest::keysNeverReachAnotherApplicationThanTheirReceiver()
{
    startReceiver();
    RunningApplication judged;
    judged.processIdentifier = 1;
    judged.localizedName = u"Mousepad"_s;
    QCOMPARE(LinuxBench::errorOf(m_keyboard.post({text(u"x"_s)}, 0us, judged)),
             u"“Mousepad” is no longer in front, so no keys were sent."_s);
    QCOMPARE(post({key(36)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void KeyboardTest::withoutAnApplicationInFrontNothingIsSent()
{
    QCOMPARE(post({text(u"lost"_s)}), u"No application is in front to receive the keys."_s);
}

void KeyboardTest::untypableTextSendsNoKeys()
{
    startReceiver();
    const QString refusal = u"The text holds a character that no key can type (U+001b)."_s;
    QCOMPARE(post({text(u"abc"_s), text(u"def\x1b"_s)}), refusal);
    QCOMPARE(post({key(36)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void KeyboardTest::charactersThatTheApplicationCutsAreNotSent()
{
    startReceiver();
    m_takesEveryCharacter = false;
    const QString refusal = post({text(u"ab"_s), text(u"c🎉"_s)});
    const QString accepted = post({text(u"漢"_s), text(u"\n"_s)});
    m_takesEveryCharacter = true;
    QVERIFY2(refusal.endsWith(u"may not take the character “🎉”, so nothing was typed."_s),
             qPrintable(refusal));
    QCOMPARE(accepted, QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"漢\r"_s);
}

void KeyboardTest::typingStopsWhenAnotherApplicationGetsTheFocus()
{
    startReceiver();
    const std::optional<RunningApplication> receiver = frontmostApplication();
    const QList<KeyStroke> longText(2000, text(u"é"_s));
    QCoro::Task<void> typing = m_keyboard.post(longText, 15ms, receiver);
    QByteArray told;
    const auto hasBegun = [this, &told] {
        told += m_receiver.readAllStandardOutput();
        return told.contains("press c9");
    };
    QVERIFY(QTest::qWaitFor(hasBegun, PrivateDesktop::patience));
    OwnWindow other;
    other.setTitle(u"Other"_s);
    other.resize(300, 200);
    other.show();
    QCOMPARE(LinuxBench::errorOf(std::move(typing)),
             u"“Receiver” lost the keyboard focus, so typing was stopped."_s);
    other.close();
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), u"Receiver"_s, PrivateDesktop::patience);
    QCOMPARE(post({key(36)}), QString());
    told += receivedUntilReturn();
    QVERIFY(textIn(told).size() < longText.size());
    QCOMPARE(eventsIn(told).last().modifiers, 0);
}

void KeyboardTest::keysCanBeSent()
{
    QVERIFY(WaylandKeyboard::isOfferedBy(m_connection));
    QVERIFY(Awaited::result(m_keyboard.canSendKeys()));
}

QTEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
