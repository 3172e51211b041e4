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
#include "applications/support/GnomeQuestions.h"
#include "applications/support/GnomeScreen.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QProcess>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using GnomeScreen::Layout;
using KeyStrokes::key;
using ReceivedKeys::eventsIn;
using ReceivedKeys::pressedKeys;

namespace {

struct Services
{
    explicit Services(const ReceiverKeyboard::FrontmostWindow &frontmostWindow)
        : keyboard(extension, portals, connection, windows, frontmostWindow, clock)
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

private:
    QCoro::Task<std::optional<DesktopWindow>> frontmostWindow();
    std::optional<RunningApplication> frontmostApplication();
    void startReceiver();
    QString post(const QList<KeyStroke> &strokes);
    // Waits until the receiver has printed this, and returns all that it has printed.
    QByteArray receivedUntil(const QByteArray &part);
    // What the receiver prints of the strokes.
    QByteArray printed(const QList<KeyStroke> &strokes);

    std::optional<Services> m_services;
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
    return failure.isEmpty() ? receivedUntil("release 1000000") : failure.toUtf8();
}

void ShellKeyboardTest::initTestCase()
{
    QVERIFY(PrivateDesktop::isHere() && Screen::session() == Screen::Session::Gnome);
    m_receiver.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    GnomeQuestions::allowKeys();
    m_services.emplace([this] { return frontmostWindow(); });
}

void ShellKeyboardTest::cleanup()
{
    m_receiver.kill();
    m_receiver.waitForFinished();
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

QTEST_MAIN(ShellKeyboardTest)
#include "ShellKeyboardTest.moc"
