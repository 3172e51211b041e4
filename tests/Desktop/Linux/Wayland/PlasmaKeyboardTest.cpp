// SPDX-License-Identifier: Apache-2.0
// Typing on a real compositor, KWin: what arrives in applications, and what becomes of the clipboard.
#include "Desktop/Linux/Wayland/PlasmaKeyboard.h"
#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/ReceivedKeys.h"
#include "Desktop/Linux/Wayland/PlasmaWindows.h"
#include "Desktop/SystemClock.h"
#include "Support/Awaited.h"
#include "applications/support/Kwin.h"
#include "applications/support/KwinHands.h"
#include "applications/support/PrivateDesktop.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QProcess>
#include <QRasterWindow>
#include <QSet>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <optional>

#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using KeyStrokes::key;
using KeyStrokes::text;
using ReceivedKeys::eventsIn;
using ReceivedKeys::pressedKeys;
using ReceivedKeys::textIn;

namespace {

// A window of this program: the palette, or another application to the receiver.
class OwnWindow : public QRasterWindow
{
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent *) override { ++keys; }
};

// Runs the event loop meanwhile: this program may own the clipboard.
QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    const auto hasEnded = [&process] { return process.state() == QProcess::NotRunning; };
    return QTest::qWaitFor(hasEnded, PrivateDesktop::patience) ? process.readAllStandardOutput()
                                                               : "no end of " + program.toUtf8();
}

// What is in the clipboard, as another program sees it.
QByteArray clipboard(const QString &format = u"text/plain;charset=utf-8"_s)
{
    return output(u"wl-paste"_s, {u"--no-newline"_s, u"--type"_s, format});
}

QSet<QByteArray> clipboardFormats()
{
    const QByteArrayList formats = output(u"wl-paste"_s, {u"--list-types"_s}).trimmed().split('\n');
    return {formats.cbegin(), formats.cend()};
}

void copy(const QByteArray &data, const QString &format = u"text/plain"_s)
{
    QProcess program;
    program.setStandardOutputFile(QProcess::nullDevice());
    program.setStandardErrorFile(QProcess::nullDevice());
    program.start(u"wl-copy"_s, {u"--type"_s, format});
    program.write(data);
    program.closeWriteChannel();
    QVERIFY(program.waitForFinished(PrivateDesktop::patience));
}

void setLayouts(const QByteArray &names)
{
    PrivateDesktop::write(PrivateDesktop::home(u".config/kxkbrc"_s),
                          "[Layout]\nUse=true\nResetOldOptions=true\nLayoutList=" + names + '\n');
    QDBusConnection::sessionBus().send(
        QDBusMessage::createSignal(u"/Layouts"_s, u"org.kde.keyboard"_s, u"reloadConfig"_s));
}

QDBusInterface layouts()
{
    return QDBusInterface(u"org.kde.keyboard"_s, u"/Layouts"_s, u"org.kde.KeyboardLayouts"_s);
}

// The services, connected after the program has got the permission.
struct Services
{
    explicit Services(const ReceiverKeyboard::FrontmostWindow &frontmostWindow,
                      const PlasmaKeyboard::IsTerminal &isTerminal)
        : keyboard(connection, windows, frontmostWindow, isTerminal, clock)
    {
    }

    SystemClock clock;
    WaylandConnection connection;
    PlasmaWindows windows{connection, clock};
    PlasmaKeyboard keyboard;
    KwinHands hands;
};

} // namespace

class PlasmaKeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void textArrivesAsWritten_data();
    void textArrivesAsWritten();
    void ownCharactersAreKeys();
    void commandTArrivesAsControlT();
    void theUsersLayoutIsUsed_data();
    void theUsersLayoutIsUsed();
    void theActiveLayoutIsUsed();
    void typingStopsWhenTheLayoutChanges();
    void capsLockDoesNotChangeTheText();
    void heldModifiersAreWaitedFor();
    void modifiersHeldForLongPreventTyping();
    void aLongTextArrivesCompletelyAndInOrder();
    void theClipboardIsGivenBack_data();
    void theClipboardIsGivenBack();
    void anEmptyClipboardIsGivenBack();
    void theClipboardIsGivenBackAfterAFailure();
    void whatIsCopiedMeanwhileStays();
    void aClipboardThatCannotBeKeptIsNotReplaced();
    void terminalsGetTheirOwnPasteKeys();
    void aStruckKeyIsNotConfirmed();
    void keysNeverGoToOurOwnWindow();
    void keysNeverReachAnotherApplicationThanTheirReceiver();
    void withoutAnApplicationInFrontNothingIsSent();
    void untypableTextSendsNoKeys();
    void typingStopsWhenAnotherApplicationGetsTheFocus();
    void keysCanBeSent();

private:
    QCoro::Task<std::optional<DesktopWindow>> frontmostWindow();
    QCoro::Task<bool> isTerminal() { co_return m_isTerminal; }
    std::optional<RunningApplication> frontmostApplication();
    QString titleInFront();
    void startReceiver();
    QString post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause = 0us);
    // The receiver's output, once Return has been released.
    QByteArray receivedUntilReturn();
    // Waits until the receiver has printed this, and returns all that it has printed.
    QByteArray receivedUntil(const QByteArray &part);

    std::optional<Services> m_services;
    bool m_isTerminal = false;
    QProcess m_receiver;
};

QCoro::Task<std::optional<DesktopWindow>> PlasmaKeyboardTest::frontmostWindow()
{
    const WindowSnapshot now = co_await m_services->windows.snapshot();
    const DesktopWindow *window = now.frontmost(QCoreApplication::applicationPid());
    if (!window)
        co_return std::nullopt;
    co_return *window;
}

std::optional<RunningApplication> PlasmaKeyboardTest::frontmostApplication()
{
    const std::optional<DesktopWindow> window = Awaited::result(frontmostWindow());
    if (!window)
        return std::nullopt;
    RunningApplication application;
    application.processIdentifier = window->process;
    application.localizedName = window->title;
    return application;
}

QString PlasmaKeyboardTest::titleInFront()
{
    const WindowSnapshot now = Awaited::result(m_services->windows.snapshot());
    return now.active() ? now.active()->title : QString();
}

void PlasmaKeyboardTest::startReceiver()
{
    m_receiver.start(QString::fromLatin1(KEY_RECEIVER), {u"Receiver"_s});
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), u"Receiver"_s, PrivateDesktop::patience);
}

QString PlasmaKeyboardTest::post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause)
{
    return LinuxBench::errorOf(m_services->keyboard.post(strokes, pause, frontmostApplication()));
}

QByteArray PlasmaKeyboardTest::receivedUntil(const QByteArray &part)
{
    QByteArray told;
    const auto look = [this, &told, &part] {
        told += m_receiver.readAllStandardOutput();
        return told.contains(part);
    };
    return QTest::qWaitFor(look, PrivateDesktop::patience) ? told : QByteArray();
}

QByteArray PlasmaKeyboardTest::receivedUntilReturn()
{
    return receivedUntil("release 1000004");
}

void PlasmaKeyboardTest::initTestCase()
{
    QGuiApplication::setDesktopFileName(u"org.orvane.Test"_s);
    m_receiver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QVERIFY(Kwin::permitThisProgram());
    m_services.emplace([this] { return frontmostWindow(); },
                       [this](RunningApplication) { return isTerminal(); });
}

void PlasmaKeyboardTest::cleanup()
{
    m_receiver.kill();
    m_receiver.waitForFinished();
    m_isTerminal = false;
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), QString(), PrivateDesktop::patience);
}

void PlasmaKeyboardTest::textArrivesAsWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << u" !\"#$%&'()*+,-./0189:;<=>?@AZ[\\]^_`az{|}~"_s;
    QTest::newRow("accents") << u"Été à Łódź, žluťoučký kůň, cafe\u0301"_s;
    QTest::newRow("Chinese") << u"天地玄黃宇宙洪荒日月盈昃辰宿列張寒來暑往秋收冬藏閏餘成歲律呂調陽"_s;
    QTest::newRow("emoji") << u"👍🏽 👩🏿‍🚀 🎉"_s;
    QTest::newRow("tab") << u"a\té\tb"_s;
    QTest::newRow("lines") << u"é\rb\rü\rc"_s;
}

void PlasmaKeyboardTest::textArrivesAsWritten()
{
    QFETCH(const QString, text);
    startReceiver();
    QCOMPARE(post({KeyStrokes::text(text), key(53)}), QString());
    const QByteArray told = receivedUntil("release 1000000"); // Escape
    QCOMPARE(textIn(told), text + u'\x1b');
    QCOMPARE(pressedKeys(told), QList<int>());
}

void PlasmaKeyboardTest::ownCharactersAreKeys()
{
    copy("mine");
    startReceiver();
    QCOMPARE(post({text(u"Plain text"_s), text(u" of two strokes\n"_s)}), QString());
    const QByteArray told = receivedUntilReturn();
    QCOMPARE(textIn(told), u"Plain text of two strokes\r"_s);
    QVERIFY2(!told.contains("paste"), told.constData());
}

void PlasmaKeyboardTest::commandTArrivesAsControlT()
{
    startReceiver();
    QCOMPARE(post({key(17, EventFlag::Command), key(36)}), QString());
    const QByteArray told = receivedUntilReturn();
    QVERIFY2(told.contains("press 54 4000000"), told.constData());
    QCOMPARE(eventsIn(told).last().modifiers, 0);
    QCOMPARE(pressedKeys(told), QList<int>());
}

void PlasmaKeyboardTest::theUsersLayoutIsUsed_data()
{
    QTest::addColumn<QByteArray>("layout");
    QTest::addColumn<QString>("text");
    QTest::newRow("German") << QByteArray("de") << u"Zyklus öäüß @€ {[]} /-_"_s;
    QTest::newRow("French") << QByteArray("fr") << u"Azerty 1234 éèçà @#"_s;
    QTest::newRow("Russian") << QByteArray("ru") << u"Привет, мир"_s;
}

void PlasmaKeyboardTest::theUsersLayoutIsUsed()
{
    QFETCH(const QByteArray, layout);
    QFETCH(const QString, text);
    startReceiver();
    setLayouts(layout);
    // Until KWin has read the setting, the text is pasted.
    const auto hasKeys = [this, &text] {
        const QString failure = post({KeyStrokes::text(text), key(36)});
        const QByteArray told = receivedUntilReturn();
        return failure.isEmpty() && textIn(told) == text + u'\r' && !told.contains("paste");
    };
    const bool isTyped = QTest::qWaitFor(hasKeys, PrivateDesktop::patience);
    setLayouts("us");
    QVERIFY(isTyped);
}

// With a Russian layout active, Latin characters are pasted, and shortcuts are the keys of the other layout.
void PlasmaKeyboardTest::theActiveLayoutIsUsed()
{
    startReceiver();
    setLayouts("us,ru");
    const auto hasTwo = [] {
        return layouts().call(u"setLayout"_s, 1U).arguments().value(0).toBool() &&
               QDBusReply<uint>(layouts().call(u"getLayout"_s)).value() == 1;
    };
    QVERIFY(QTest::qWaitFor(hasTwo, PrivateDesktop::patience));
    const QString failure =
        post({text(u"Привет"_s), text(u"!\n"_s), text(u"Latin\t"_s), key(17, EventFlag::Command), key(53)});
    setLayouts("us");
    QCOMPARE(failure, QString());
    const QByteArray told = receivedUntil("release 1000000"); // Escape
    QVERIFY2(textIn(told).startsWith(u"Привет!\rLatin\t"_s), told.constData());
    QVERIFY2(told.contains("press 54 4000000"), told.constData());
}

void PlasmaKeyboardTest::typingStopsWhenTheLayoutChanges()
{
    startReceiver();
    setLayouts("us,ru");
    const auto hasTwo = [] { return layouts().call(u"setLayout"_s, 0U).arguments().value(0).toBool(); };
    QVERIFY(QTest::qWaitFor(hasTwo, PrivateDesktop::patience));
    const QList<KeyStroke> longText(2000, text(u"abcdefghijabcdefghij"_s));
    QCoro::Task<void> typing = m_services->keyboard.post(longText, 15ms, frontmostApplication());
    QVERIFY(!receivedUntil("press 41").isEmpty());
    layouts().call(u"setLayout"_s, 1U);
    const QString failure = LinuxBench::errorOf(std::move(typing));
    setLayouts("us");
    QCOMPARE(failure, u"The keyboard layout changed, so typing was stopped."_s);
}

void PlasmaKeyboardTest::capsLockDoesNotChangeTheText()
{
    startReceiver();
    m_services->hands.strike(KEY_CAPSLOCK);
    const QString failure = post({text(u"Some Text\n"_s)});
    m_services->hands.strike(KEY_CAPSLOCK);
    QCOMPARE(failure, QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"Some Text\r"_s);
}

void PlasmaKeyboardTest::heldModifiersAreWaitedFor()
{
    startReceiver();
    m_services->hands.press(KEY_LEFTSHIFT);
    QVERIFY(!receivedUntil("press 1000020").isEmpty());
    QTimer::singleShot(100ms, this, [this] { m_services->hands.release(KEY_LEFTSHIFT); });
    QCOMPARE(post({text(u"abc\n"_s)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"abc\r"_s);
}

void PlasmaKeyboardTest::modifiersHeldForLongPreventTyping()
{
    startReceiver();
    for (const int modifier : {KEY_LEFTSHIFT, KEY_RIGHTCTRL, KEY_LEFTALT, KEY_LEFTMETA}) {
        m_services->hands.press(modifier);
        const QString failure = post({text(u"abc\n"_s)});
        m_services->hands.release(modifier);
        QVERIFY2(failure.startsWith(u"A modifier key"_s) && failure.endsWith(u"so no keys were sent."_s),
                 qPrintable(failure));
    }
    QCOMPARE(post({key(36)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void PlasmaKeyboardTest::aLongTextArrivesCompletelyAndInOrder()
{
    startReceiver();
    QString whole;
    QString expected;
    for (int line = 0; line < 20; ++line) {
        QString text;
        for (int index = 0; index < 60; ++index)
            text += QChar(line % 2 ? u'一' + line * 60 + index : u'!' + (line + index) % 94);
        whole += text + u'\n';
        expected += text + u'\r';
    }
    QList<KeyStroke> strokes;
    for (qsizetype begin = 0; begin < whole.size(); begin += 20)
        strokes.append(text(whole.mid(begin, 20)));
    QCOMPARE(post(strokes + QList<KeyStroke>{key(53)}), QString());
    QCOMPARE(textIn(receivedUntil("release 1000000")), expected + u'\x1b');
}

void PlasmaKeyboardTest::theClipboardIsGivenBack_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("format");
    QTest::newRow("text") << QByteArray("the user's, größer") << u"text/plain;charset=utf-8"_s;
    QTest::newRow("binary") << QByteArray(300'000, '\x80') << u"image/png"_s;
}

void PlasmaKeyboardTest::theClipboardIsGivenBack()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, format);
    copy(content, format);
    const QSet<QByteArray> formats = clipboardFormats();
    startReceiver();
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(post({text(u"größer\nnoch größer\n"_s)}), QString());
        QCOMPARE(clipboard(format), content);
        QCOMPARE(clipboardFormats(), formats);
    }
    const auto isTyped = [this, told = QByteArray()]() mutable {
        told += m_receiver.readAllStandardOutput();
        return textIn(told) == u"größer\rnoch größer\rgrößer\rnoch größer\r"_s;
    };
    QVERIFY(QTest::qWaitFor(isTyped, PrivateDesktop::patience));
}

void PlasmaKeyboardTest::anEmptyClipboardIsGivenBack()
{
    output(u"wl-copy"_s, {u"--clear"_s});
    startReceiver();
    QCOMPARE(post({text(u"größer\n"_s)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"größer\r"_s);
    QCOMPARE(clipboardFormats(), QSet<QByteArray>{QByteArray()});
}

void PlasmaKeyboardTest::theClipboardIsGivenBackAfterAFailure()
{
    copy("mine");
    startReceiver();
    m_isTerminal = true; // the receiver knows only Ctrl+V
    QCOMPARE(post({text(u"größer"_s)}),
             u"“Receiver” hasn't taken the text from the clipboard, so typing was stopped."_s);
    QCOMPARE(clipboard(), "mine");
}

void PlasmaKeyboardTest::whatIsCopiedMeanwhileStays()
{
    copy("earlier");
    startReceiver();
    m_isTerminal = true;
    QCoro::Task<void> typing = m_services->keyboard.post({text(u"größer"_s)}, 0us, frontmostApplication());
    QVERIFY(!receivedUntil("press 56 6000000").isEmpty());
    copy("later");
    LinuxBench::errorOf(std::move(typing));
    QCOMPARE(clipboard(), "later");
}

void PlasmaKeyboardTest::aClipboardThatCannotBeKeptIsNotReplaced()
{
    QProcess owner;
    owner.start(u"wl-copy"_s, {u"--foreground"_s, u"--type"_s, u"text/plain"_s, u"mine"_s});
    QTRY_COMPARE_WITH_TIMEOUT(clipboard(), "mine", PrivateDesktop::patience);
    const QSet<QByteArray> formats = clipboardFormats();
    startReceiver();
    ::kill(static_cast<pid_t>(owner.processId()), SIGSTOP);
    const QString failure = post({text(u"größer"_s)});
    const QSet<QByteArray> formatsAfterwards = clipboardFormats();
    owner.kill();
    owner.waitForFinished();
    QCOMPARE(failure, u"The clipboard's application doesn't hand out its content, so nothing was pasted."_s);
    QCOMPARE(formatsAfterwards, formats);
}

void PlasmaKeyboardTest::terminalsGetTheirOwnPasteKeys()
{
    startReceiver();
    m_isTerminal = true;
    post({text(u"größer"_s)});
    const QByteArray told = receivedUntil("release 56");
    QVERIFY2(told.contains("press 56 6000000"), told.constData()); // Ctrl+Shift+V
}

void PlasmaKeyboardTest::aStruckKeyIsNotConfirmed()
{
    startReceiver();
    QVERIFY(!Awaited::result(m_services->keyboard.strike(36, *frontmostApplication())));
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void PlasmaKeyboardTest::keysNeverGoToOurOwnWindow()
{
    startReceiver();
    OwnWindow palette;
    palette.setTitle(u"Palette"_s);
    palette.resize(300, 200);
    palette.show();
    QTRY_COMPARE_WITH_TIMEOUT(titleInFront(), u"Palette"_s, PrivateDesktop::patience);
    QCOMPARE(post({text(u"privé\n"_s)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"privé\r"_s);
    QCOMPARE(titleInFront(), u"Receiver"_s);
    QCOMPARE(palette.keys, 0);
}

void PlasmaKeyboardTest::keysNeverReachAnotherApplicationThanTheirReceiver()
{
    startReceiver();
    RunningApplication judged;
    judged.processIdentifier = 1;
    judged.localizedName = u"Mousepad"_s;
    QCOMPARE(LinuxBench::errorOf(m_services->keyboard.post({text(u"x"_s)}, 0us, judged)),
             u"“Mousepad” is no longer in front, so no keys were sent."_s);
    QCOMPARE(post({key(36)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void PlasmaKeyboardTest::withoutAnApplicationInFrontNothingIsSent()
{
    QCOMPARE(post({text(u"lost"_s)}), u"No application is in front to receive the keys."_s);
}

void PlasmaKeyboardTest::untypableTextSendsNoKeys()
{
    startReceiver();
    const QString refusal = u"The text holds a character that no key can type (U+001b)."_s;
    QCOMPARE(post({text(u"abc"_s), text(u"déf\x1b"_s)}), refusal);
    QCOMPARE(post({key(36)}), QString());
    QCOMPARE(textIn(receivedUntilReturn()), u"\r"_s);
}

void PlasmaKeyboardTest::typingStopsWhenAnotherApplicationGetsTheFocus()
{
    startReceiver();
    const std::optional<RunningApplication> receiver = frontmostApplication();
    const QList<KeyStroke> longText(2000, text(u"abcdefghijabcdefghij"_s));
    QCoro::Task<void> typing = m_services->keyboard.post(longText, 15ms, receiver);
    QByteArray told = receivedUntil("press 41");
    QVERIFY(!told.isEmpty());
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

void PlasmaKeyboardTest::keysCanBeSent()
{
    QVERIFY(PlasmaKeyboard::isOfferedBy(m_services->connection));
    QVERIFY(Awaited::result(m_services->keyboard.canSendKeys()));
}

QTEST_MAIN(PlasmaKeyboardTest)
#include "PlasmaKeyboardTest.moc"
