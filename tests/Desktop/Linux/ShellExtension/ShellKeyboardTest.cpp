// SPDX-License-Identifier: Apache-2.0
// Typing on a real GNOME desktop with our extension of its shell: what arrives in an application.
#include "Desktop/Linux/ShellExtension/ShellKeyboard.h"

#include "Actions/Operations/Keys.h"
#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/ReceivedKeys.h"
#include "Desktop/Linux/ShellExtension/ShellWindows.h"
#include "Desktop/SystemClock.h"
#include "Support/Awaited.h"
#include "applications/support/GnomeClipboard.h"
#include "applications/support/GnomeQuestions.h"
#include "applications/support/GnomeScreen.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QProcess>
#include <QRasterWindow>
#include <QTest>

#include <algorithm>
#include <optional>

#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using GnomeScreen::Layout;
using KeyStrokes::key;
using ReceivedKeys::eventsIn;
using ReceivedKeys::pressedKeys;
using ReceivedKeys::textIn;
using Content = QMap<QString, QByteArray>; // of the clipboard, by format

namespace {

struct Services
{
    Services(const ReceiverKeyboard::FrontmostWindow &frontmostWindow,
             const ShellKeyboard::IsTerminal &isTerminal)
        : keyboard(extension, portals, connection, windows, frontmostWindow, isTerminal, clock)
    {
    }

    SystemClock clock;
    WaylandConnection connection;
    ShellExtension extension;
    PortalBus portals;
    ShellWindows windows{extension, clock};
    ShellKeyboard keyboard;
};

void addLayouts()
{
    QTest::addColumn<Layout>("layout");
    QTest::newRow("US") << Layout::US;
    QTest::newRow("German") << Layout::German;
    QTest::newRow("French") << Layout::French;
    QTest::newRow("Russian") << Layout::Russian;
}

// Qt's keys for the key names.
int qtKey(const QString &name, EventFlags flags)
{
    if (name == "tab"_L1 && flags.testFlag(EventFlag::Shift))
        return Qt::Key_Backtab;
    static const QHash<QString, int> named{
        {u"return"_s, Qt::Key_Return}, {u"enter"_s, Qt::Key_Return},     {u"tab"_s, Qt::Key_Tab},
        {u"space"_s, Qt::Key_Space},   {u"delete"_s, Qt::Key_Backspace}, {u"backspace"_s, Qt::Key_Backspace},
        {u"escape"_s, Qt::Key_Escape}, {u"esc"_s, Qt::Key_Escape},       {u"left"_s, Qt::Key_Left},
        {u"right"_s, Qt::Key_Right},   {u"down"_s, Qt::Key_Down},        {u"up"_s, Qt::Key_Up}};
    return named.value(name, name.size() == 1 ? name.front().toUpper().unicode() : 0);
}

// As text.
QString shortcut(int key, EventFlags flags)
{
    return (flags.testFlag(EventFlag::Command) ? u"Ctrl+"_s : QString()) +
           (flags.testFlag(EventFlag::Alternate) ? u"Alt+"_s : QString()) + QString::number(key, 16);
}

// Without the modifiers' own keys, and the Escape at the end.
QStringList shortcutsIn(const QByteArray &told)
{
    QStringList all;
    for (const ReceivedKeys::Event &event : eventsIn(told)) {
        EventFlags flags;
        flags.setFlag(EventFlag::Command, event.modifiers & int(Qt::ControlModifier));
        flags.setFlag(EventFlag::Alternate, event.modifiers & int(Qt::AltModifier));
        const bool isModifier = (event.key >= Qt::Key_Shift && event.key <= Qt::Key_Alt) ||
                                event.key == Qt::Key_AltGr || event.key == 0;
        if (event.isPress && flags && !isModifier)
            all.append(shortcut(event.key, flags));
    }
    return all;
}

// GNOME's own: it shows its window switchers and the window's menu, and changes the workspace.
bool isTakenByTheDesktop(int key, EventFlags flags)
{
    const bool isArrow = key >= Qt::Key_Left && key <= Qt::Key_Down;
    if (flags.testFlag(EventFlag::Alternate))
        return key == Qt::Key_Tab || key == Qt::Key_Space || key == Qt::Key_Escape ||
               (isArrow && flags.testFlag(EventFlag::Command));
    return false;
}

} // namespace

class ShellKeyboardTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void shortcutsArriveOnEveryLayout_data();
    void shortcutsArriveOnEveryLayout();
    void digitsOfShortcutsAreTheirKeys();
    void textArrivesWithoutATextField_data();
    void textArrivesWithoutATextField();
    void ownCharactersAreKeys_data();
    void ownCharactersAreKeys();
    void plainKeysTypeTheirCharacters_data();
    void plainKeysTypeTheirCharacters();
    void capsLockDoesNotChangeTheText();
    void aLongTextArrivesCompletelyAndInOrder();
    void theClipboardIsGivenBack_data();
    void theClipboardIsGivenBack();
    void anEmptyClipboardIsGivenBack();
    void theClipboardIsGivenBackAfterAFailure();
    void whatIsCopiedMeanwhileStays();
    void aClipboardThatCannotBeKeptIsNotReplaced();
    void typingStopsWhenAnotherApplicationGetsTheFocus();

private:
    QCoro::Task<std::optional<DesktopWindow>> frontmostWindow();
    QCoro::Task<bool> isTerminal() { co_return m_isTerminal; }
    std::optional<RunningApplication> frontmostApplication();
    void startReceiver();
    QString post(const QList<KeyStroke> &strokes);
    // Waits until the receiver has printed this, and returns all that it has printed.
    QByteArray receivedUntil(const QByteArray &part);
    bool hasClipboard(const Content &content);
    // What the receiver prints of the strokes.
    QByteArray printed(const QList<KeyStroke> &strokes);

    std::optional<Services> m_services;
    bool m_isTerminal = false;
    QProcess m_receiver;
};

QCoro::Task<std::optional<DesktopWindow>> ShellKeyboardTest::frontmostWindow()
{
    const WindowSnapshot now = co_await m_services->windows.snapshot();
    const DesktopWindow *window = now.frontmost(QCoreApplication::applicationPid());
    if (!window)
        co_return std::nullopt;
    co_return *window;
}

std::optional<RunningApplication> ShellKeyboardTest::frontmostApplication()
{
    const std::optional<DesktopWindow> window = Awaited::result(frontmostWindow());
    if (!window)
        return std::nullopt;
    RunningApplication application;
    application.processIdentifier = window->process;
    application.localizedName = window->title;
    return application;
}

void ShellKeyboardTest::startReceiver()
{
    GnomeClipboard::setHandedOut(true);
    m_receiver.start(QString::fromLatin1(KEY_RECEIVER), {u"Receiver"_s});
    const auto isInFront = [] {
        const auto window = Screen::activeWindow();
        return window && window->title == "Receiver"_L1;
    };
    QVERIFY(QTest::qWaitFor(isInFront, PrivateDesktop::patience));
}

QString ShellKeyboardTest::post(const QList<KeyStroke> &strokes)
{
    return LinuxBench::errorOf(m_services->keyboard.post(strokes, 0us, frontmostApplication()));
}

QByteArray ShellKeyboardTest::receivedUntil(const QByteArray &part)
{
    QByteArray told;
    const auto look = [this, &told, &part] {
        told += m_receiver.readAllStandardOutput();
        return told.contains(part);
    };
    return QTest::qWaitFor(look, PrivateDesktop::patience) ? told : "not received in time: " + told;
}

QByteArray ShellKeyboardTest::printed(const QList<KeyStroke> &strokes)
{
    const QString failure = post(strokes + QList<KeyStroke>{key(53)}); // Escape
    if (!failure.isEmpty())
        qWarning("%s", qPrintable(failure));
    return failure.isEmpty() ? receivedUntil("release 1000000") : QByteArray();
}

void ShellKeyboardTest::initTestCase()
{
    QVERIFY(PrivateDesktop::isHere() && Screen::session() == Screen::Session::Gnome);
    m_receiver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    GnomeQuestions::allowKeys();
    m_services.emplace([this] { return frontmostWindow(); },
                       [this](RunningApplication) { return isTerminal(); });
}

void ShellKeyboardTest::cleanup()
{
    m_receiver.kill();
    m_receiver.waitForFinished();
    m_isTerminal = false;
    QVERIFY(PrivateDesktop::clear());
    QVERIFY(GnomeScreen::useLayout(Layout::US));
}

void ShellKeyboardTest::shortcutsArriveOnEveryLayout_data()
{
    addLayouts();
}

// Of every key, with the same modifiers. With Shift, other keys than letters may be other characters.
void ShellKeyboardTest::shortcutsArriveOnEveryLayout()
{
    QFETCH(const Layout, layout);
    QVERIFY(GnomeScreen::useLayout(layout));
    startReceiver();
    for (const EventFlags flags : {EventFlags(EventFlag::Command), EventFlags(EventFlag::Alternate),
                                   EventFlag::Command | EventFlag::Shift}) {
        QList<KeyStroke> strokes;
        QStringList expected;
        for (const QString &name : Keys::keyCodes().keys()) {
            const int arriving = qtKey(name, flags);
            const bool isOther = flags.testFlag(EventFlag::Shift) && arriving < 0x100 && !name[0].isLetter();
            const bool isOnlyKey = layout == Layout::French && name[0].isDigit();
            // With Alt, Qt doesn't look for Latin letters in other layouts.
            const bool isCyrillic =
                layout == Layout::Russian && flags == EventFlag::Alternate && arriving < 0x100;
            if (isTakenByTheDesktop(arriving, flags) || isOther || isOnlyKey || isCyrillic)
                continue;
            strokes.append(key(Keys::keyCodes().value(name), flags));
            expected.append(shortcut(arriving, flags));
        }
        const QByteArray told = printed(strokes);
        QCOMPARE(shortcutsIn(told), expected);
        QCOMPARE(pressedKeys(told), QList<int>());
    }
}

// On AZERTY, users press Ctrl with the digit's key, without Shift.
void ShellKeyboardTest::digitsOfShortcutsAreTheirKeys()
{
    QVERIFY(GnomeScreen::useLayout(Layout::French));
    startReceiver();
    const QList<std::uint16_t> digits{18, 19, 20, 21, 23, 22, 26, 28, 25, 29};
    for (qsizetype index = 0; index < digits.size(); ++index) {
        const QByteArray told = printed({key(digits[index], EventFlag::Command)});
        const QByteArray code = ' ' + QByteArray::number(10 + index) + '\n'; // evdev's, plus 8
        const auto lines = told.split('\n');
        const auto isIt = [&](const QByteArray &line) {
            return line.startsWith("press ") && line.contains(" 4000000 ") && (line + '\n').endsWith(code);
        };
        QVERIFY2(std::any_of(lines.cbegin(), lines.cend(), isIt), told.constData());
    }
}

void ShellKeyboardTest::textArrivesWithoutATextField_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ASCII") << u" !\"#$%&'()*+,-./0189:;<=>?@AZ[\\]^_`az{|}~"_s;
    QTest::newRow("accents") << u"Été à Łódź, žluťoučký kůň, cafe\u0301"_s;
    QTest::newRow("Chinese") << u"天地玄黃宇宙洪荒日月盈昃辰宿列張寒來暑往秋收冬藏閏餘成歲律呂調陽"_s;
    QTest::newRow("emoji") << u"👍🏽 👩🏿‍🚀 🎉"_s;
    QTest::newRow("tab") << u"a\té\tb"_s;
    QTest::newRow("lines") << u"é\rb\rü\rc"_s;
}

void ShellKeyboardTest::textArrivesWithoutATextField()
{
    QFETCH(const QString, text);
    startReceiver();
    const QByteArray told = printed({KeyStrokes::text(text)});
    QCOMPARE(textIn(told), text + u'\x1b');
    QCOMPARE(pressedKeys(told), QList<int>());
}

void ShellKeyboardTest::ownCharactersAreKeys_data()
{
    QTest::addColumn<Layout>("layout");
    QTest::addColumn<QString>("text");
    QTest::newRow("US") << Layout::US << u"Plain {text}: #1"_s;
    QTest::newRow("German") << Layout::German << u"Zyklus öäüß @€ {[]} /-_"_s;
    QTest::newRow("French") << Layout::French << u"Azerty 1234 éèçà @#"_s;
    QTest::newRow("Russian") << Layout::Russian << u"Привет, мир"_s;
}

void ShellKeyboardTest::ownCharactersAreKeys()
{
    QFETCH(const Layout, layout);
    QFETCH(const QString, text);
    QVERIFY(GnomeScreen::useLayout(layout));
    startReceiver();
    const QByteArray told = printed({KeyStrokes::text(text.left(4)), KeyStrokes::text(text.mid(4))});
    QCOMPARE(textIn(told), text + u'\x1b');
    QVERIFY2(!told.contains("paste"), told.constData());
}

void ShellKeyboardTest::plainKeysTypeTheirCharacters_data()
{
    addLayouts();
}

void ShellKeyboardTest::plainKeysTypeTheirCharacters()
{
    QFETCH(const Layout, layout);
    QVERIFY(GnomeScreen::useLayout(layout));
    startReceiver();
    QList<KeyStroke> strokes;
    QString expected;
    for (const QString &name : {u"a"_s, u"q"_s, u"y"_s, u"z"_s, u"m"_s, u"1"_s, u"0"_s, u"["_s, u"\\"_s,
                                u"/"_s, u";"_s, u"'"_s, u"="_s, u"-"_s, u","_s, u"."_s}) {
        strokes.append(key(Keys::keyCodes().value(name)));
        expected += name;
    }
    strokes.append(key(Keys::keyCodes().value(u"w"_s), EventFlag::Shift));
    QCOMPARE(textIn(printed(strokes)), expected + u"W\x1b"_s);
}

void ShellKeyboardTest::capsLockDoesNotChangeTheText()
{
    startReceiver();
    GnomeScreen::press(KEY_CAPSLOCK);
    const QByteArray told = printed({KeyStrokes::text(u"Some Text"_s)});
    GnomeScreen::press(KEY_CAPSLOCK);
    QCOMPARE(textIn(told), u"Some Text\x1b"_s);
}

// 10,000 characters, of which the layout has about half.
void ShellKeyboardTest::aLongTextArrivesCompletelyAndInOrder()
{
    startReceiver();
    QString whole;
    QString expected;
    for (int line = 0; line < 100; ++line) {
        QString text;
        for (int index = 0; index < 99; ++index)
            text += QChar(line % 2 ? u'一' + line * 99 + index : u'!' + (line + index) % 94);
        whole += text + u'\n';
        expected += text + u'\r';
    }
    QList<KeyStroke> strokes;
    for (qsizetype begin = 0; begin < whole.size(); begin += 20)
        strokes.append(KeyStrokes::text(whole.mid(begin, 20)));
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(textIn(printed(strokes)), expected + u'\x1b');
    qInfo("%lld ms", elapsed.elapsed());
}

void ShellKeyboardTest::theClipboardIsGivenBack_data()
{
    QTest::addColumn<Content>("content");
    QTest::newRow("text") << Content{{GnomeClipboard::plainText, "the user's, größer"}};
    QTest::newRow("several formats") << Content{{GnomeClipboard::plainText, "bold"},
                                                {u"text/html"_s, "<b>bold</b>"},
                                                {u"application/x-users-own"_s, QByteArray(300'000, '\x80')}};
    QTest::newRow("picture") << Content{{u"image/png"_s, QByteArray(300'000, '\x80')}};
}

void ShellKeyboardTest::theClipboardIsGivenBack()
{
    QFETCH(const Content, content);
    GnomeClipboard::copy(content);
    startReceiver();
    for (int round = 0; round < 2; ++round) {
        QCOMPARE(textIn(printed({KeyStrokes::text(u"größer\nnoch größer"_s)})), u"größer\rnoch größer\x1b"_s);
        QVERIFY(hasClipboard(content));
    }
    // Also when the session with the desktop would be closed.
    QTest::qWait(3000);
    QVERIFY(hasClipboard(content));
}

bool ShellKeyboardTest::hasClipboard(const Content &content)
{
    const auto isThere = [&content] {
        QStringList formats = GnomeClipboard::formats();
        std::sort(formats.begin(), formats.end());
        return formats == content.keys();
    };
    bool isSame = QTest::qWaitFor(isThere, PrivateDesktop::patience);
    for (const QString &format : content.keys())
        isSame = isSame && GnomeClipboard::content(format) == content.value(format);
    if (!isSame)
        qWarning() << GnomeClipboard::formats() << GnomeClipboard::content();
    return isSame;
}

void ShellKeyboardTest::anEmptyClipboardIsGivenBack()
{
    GnomeClipboard::copy({});
    startReceiver();
    QCOMPARE(textIn(printed({KeyStrokes::text(u"größer"_s)})), u"größer\x1b"_s);
    QTRY_COMPARE_WITH_TIMEOUT(GnomeClipboard::formats(), QStringList(), PrivateDesktop::patience);
}

void ShellKeyboardTest::theClipboardIsGivenBackAfterAFailure()
{
    const Content content{{GnomeClipboard::plainText, "mine"}};
    GnomeClipboard::copy(content);
    startReceiver();
    m_isTerminal = true; // the receiver knows only Ctrl+V
    QCOMPARE(post({KeyStrokes::text(u"größer"_s)}),
             u"“Receiver” hasn't taken the text from the clipboard, so typing was stopped."_s);
    QVERIFY(receivedUntil("release 56").contains("press 56 6000000")); // Ctrl+Shift+V
    QVERIFY(hasClipboard(content));
}

void ShellKeyboardTest::whatIsCopiedMeanwhileStays()
{
    GnomeClipboard::copy({{GnomeClipboard::plainText, "earlier"}});
    startReceiver();
    m_isTerminal = true;
    QCoro::Task<void> typing =
        m_services->keyboard.post({KeyStrokes::text(u"größer"_s)}, 0us, frontmostApplication());
    QVERIFY(receivedUntil("press 56 6000000").contains("press 56"));
    const Content later{{GnomeClipboard::plainText, "later"}};
    GnomeClipboard::copy(later);
    LinuxBench::errorOf(std::move(typing));
    QVERIFY(hasClipboard(later));
}

void ShellKeyboardTest::aClipboardThatCannotBeKeptIsNotReplaced()
{
    const Content content{{u"application/x-users-own"_s, "mine"}};
    GnomeClipboard::copy(content);
    startReceiver();
    GnomeClipboard::setHandedOut(false);
    const QString failure = post({KeyStrokes::text(u"größer"_s)});
    GnomeClipboard::setHandedOut(true);
    QCOMPARE(failure, u"The clipboard's application doesn't hand out its content, so nothing was pasted."_s);
    QVERIFY(hasClipboard(content));
}

void ShellKeyboardTest::typingStopsWhenAnotherApplicationGetsTheFocus()
{
    startReceiver();
    const std::optional<RunningApplication> receiver = frontmostApplication();
    const QList<KeyStroke> longText(500, KeyStrokes::text(u"abcdefghijabcdefghij"_s));
    QCoro::Task<void> typing = m_services->keyboard.post(longText, 15ms, receiver);
    QVERIFY(receivedUntil("press 41").contains("press 41"));
    QRasterWindow other;
    other.setTitle(u"Other"_s);
    other.resize(300, 200);
    other.show();
    QCOMPARE(LinuxBench::errorOf(std::move(typing)),
             u"“Receiver” lost the keyboard focus, so typing was stopped."_s);
}

QTEST_MAIN(ShellKeyboardTest)
#include "ShellKeyboardTest.moc"
