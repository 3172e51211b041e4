// SPDX-License-Identifier: Apache-2.0
// Typing on a real X server: what arrives, and that all state is restored.
#include "Desktop/Linux/KeyStrokes.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/Typing/X11Keyboard.h"
#include "Desktop/Linux/Typing/X11Typist.h"
#include "Desktop/Linux/X11/Xkb.h"
#include "Support/Awaited.h"

#include <QAbstractNativeEventFilter>
#include <QFile>
#include <QGuiApplication>
#include <QRasterWindow>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using KeyStrokes::key;
using KeyStrokes::text;

namespace {

// Text that is hard to type: several scripts, and more characters than there are spare keys.
QString hardText()
{
    QString text = u"Plain {text} ~ ^ ` \\ \"@\" €\n"_s;
    for (int index = 0; index < 120; ++index)
        text += QChar(u'一' + 7 * index);
    return text +
           u"\nÉté à Łódź, žluťoučký kůň, cafe\u0301\nСъешь ещё булок\n👍🏽 👩🏿‍🚀 🎉\n\tend"_s;
}

QByteArray keyMap()
{
    return LinuxBench::output(u"xkbcomp"_s, {u"-xkb"_s, qEnvironmentVariable("DISPLAY"), u"-"_s});
}

} // namespace

// Counts the keymap changes that Qt is notified of.
class KeyNotices : public QAbstractNativeEventFilter
{
public:
    KeyNotices()
    {
        const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
        m_eventType = xcb_get_extension_data(x11->connection(), &xcb_xkb_id)->first_event;
        qGuiApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray &, void *message, qintptr *) override
    {
        const auto *notice = static_cast<const xcb_xkb_map_notify_event_t *>(message);
        if (notice->response_type == m_eventType && notice->xkbType == XCB_XKB_MAP_NOTIFY)
            ++(notice->nKeySyms == 1 ? ofOneKey : ofAllKeys);
        return false;
    }

    int ofOneKey = 0;
    int ofAllKeys = 0;

private:
    std::uint8_t m_eventType;
};

// Stands in for our own window: it is in the same process as the services.
class OwnWindow : public QRasterWindow
{
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent *) override { ++keys; }
};

class LinuxKeyboardTest : public QObject
{
    Q_OBJECT

private:
    KeyNotices m_notices; // runs after the services' filters, which are installed later
    LinuxBench m_bench;
    LinuxBench::Program m_receiver{nullptr, nullptr};

    QString post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause = 0us)
    {
        return m_bench.post(strokes, pause);
    }

    void startReceiver()
    {
        m_receiver = LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {u"Receiver"_s});
        QVERIFY(m_bench.waitForActive(u"Receiver"_s));
    }

    // The receiver's output, once it contains `last`.
    QByteArray receivedUntil(const QByteArray &last)
    {
        QByteArray told;
        const auto look = [this, &told, &last] {
            told += m_receiver->readAllStandardOutput();
            return told.contains(last);
        };
        return QTest::qWaitFor(look, LinuxBench::patience) ? told : QByteArray();
    }

    LinuxBench::Program startEditor(const QString &path)
    {
        // Created here, so that the editor saves without prompting for a name.
        if (!QFile(path).open(QIODevice::WriteOnly))
            qFatal("No temporary file");
        auto editor = LinuxBench::start(u"mousepad"_s, {path});
        if (!m_bench.waitForActive(u"typed.txt"_s))
            qFatal("The editor did not start");
        return editor;
    }

    // Saves the document and returns its text.
    QString savedText(const QString &path)
    {
        const QString failure = post({key(1, EventFlag::Command)});
        if (!failure.isEmpty())
            return failure;
        QString content;
        const auto read = [&path, &content] {
            QFile file(path);
            if (file.open(QIODevice::ReadOnly))
                content = QString::fromUtf8(file.readAll());
            return !content.isEmpty();
        };
        return QTest::qWaitFor(read, LinuxBench::patience) ? content : QString();
    }

    bool isModifierDown()
    {
        const auto look = [this] { return X11Keyboard(m_bench.display.connection()).isModifierHeld(); };
        return Awaited::result(m_bench.display.run(look));
    }

    static bool isCapsLockOn()
    {
        return LinuxBench::output(u"xset"_s, {u"q"_s}).simplified().contains("Caps Lock: on");
    }

private Q_SLOTS:
    void cleanup()
    {
        m_receiver.reset();
        QVERIFY(m_bench.waitForNoWindow(u"Receiver"_s));
        QVERIFY(m_bench.waitForNoWindow(u"typed.txt"_s));
    }

    void commandTArrivesAsControlT()
    {
        startReceiver();
        QCOMPARE(post({key(17, EventFlag::Command)}), QString());
        const QByteArray told = receivedUntil("release 1000021");
        QVERIFY2(told.contains("press 54 4000000"), told.constData());
        QVERIFY(!isModifierDown());
    }

    void textArrivesInAnotherApplicationAsWritten()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"typed.txt"_s);
        const auto editor = startEditor(path);
        const QByteArray before = keyMap();
        QCOMPARE(post({text(hardText())}), QString());
        QCOMPARE(keyMap(), before);
        QCOMPARE(savedText(path), hardText());
    }

    void onlyChangesByOthersReachOurOwnToolkit()
    {
        const QTemporaryDir folder;
        const auto editor = startEditor(folder.filePath(u"typed.txt"_s));
        m_notices.ofAllKeys = 0;
        QCOMPARE(post({text(hardText())}), QString());
        LinuxBench::output(u"xmodmap"_s, {u"-e"_s, u"keycode 247 = eacute"_s});
        // This notification comes last.
        QTRY_VERIFY_WITH_TIMEOUT(m_notices.ofOneKey > 0, LinuxBench::patience);
        QCOMPARE(m_notices.ofAllKeys, 0);
        LinuxBench::output(u"xmodmap"_s, {u"-e"_s, u"keycode 247 ="_s});
    }

    void capsLockDoesNotChangeTheTextAndStaysOn()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"typed.txt"_s);
        const auto editor = startEditor(path);
        LinuxBench::output(u"xdotool"_s, {u"key"_s, u"Caps_Lock"_s});
        QVERIFY(isCapsLockOn());
        QCOMPARE(post({text(u"aB éÉ яЯ"_s)}), QString());
        QVERIFY(isCapsLockOn());
        QCOMPARE(savedText(path), u"aB éÉ яЯ"_s);
        LinuxBench::output(u"xdotool"_s, {u"key"_s, u"Caps_Lock"_s});
        QVERIFY(!isCapsLockOn());
    }

    void anotherLanguageSwitchedOnDoesNotChangeTheText()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"typed.txt"_s);
        const auto editor = startEditor(path);
        LinuxBench::output(u"setxkbmap"_s, {u"de,ru"_s, {}, u"-option"_s, u"grp:toggle"_s});
        // On a German layout, brackets and at sign are on the third level.
        QCOMPARE(post({text(u"Zyklus {x} @ ß "_s)}), QString());
        LinuxBench::output(u"xdotool"_s, {u"key"_s, u"ISO_Next_Group"_s});
        QCOMPARE(post({text(u"Hello, мир"_s)}), QString());
        const QString saved = savedText(path); // Command+S, while no key types an "s"
        LinuxBench::output(u"setxkbmap"_s, {u"us"_s, u"-option"_s, {}});
        QCOMPARE(saved, u"Zyklus {x} @ ß Hello, мир"_s);
    }

    void keysNeverGoToOurOwnWindow()
    {
        startReceiver();
        OwnWindow palette;
        palette.setTitle(u"Palette"_s);
        palette.show();
        palette.requestActivate();
        QVERIFY(m_bench.waitForActive(u"Palette"_s));
        QCOMPARE(post({text(u"private"_s)}), QString());
        QVERIFY(!receivedUntil("release 45").isEmpty());
        QVERIFY(m_bench.waitForActive(u"Receiver"_s));
        QCOMPARE(palette.keys, 0);
    }

    void withoutAnApplicationInFrontNothingIsSent() { QVERIFY(!post({text(u"lost"_s)}).isEmpty()); }

    void aClosedTargetIsAnError()
    {
        startReceiver();
        const auto window = m_bench.waitForWindow(u"Receiver"_s);
        m_receiver.reset();
        QVERIFY(m_bench.waitForNoWindow(u"Receiver"_s));
        const auto type = [this, &window] {
            std::atomic_bool isStopped = false;
            X11Typist typist(m_bench.display.connection(), m_bench.display.windows(), isStopped, 5s);
            typist.type({text(u"lost"_s)}, 0us, *window);
        };
        const QString message = LinuxBench::errorOf(m_bench.display.run(type));
        QVERIFY2(message.contains(u"no keys were sent"), qPrintable(message));
    }

    void untypableTextSendsNoKeys()
    {
        startReceiver();
        QVERIFY(!post({text(u"abc"_s), text(QString(QChar(27)))}).isEmpty());
        QCOMPARE(post({key(36)}), QString());
        QVERIFY(receivedUntil("release 1000004").startsWith("press 1000004"));
    }

    void heldModifiersAreWaitedFor()
    {
        startReceiver();
        LinuxBench::output(u"xdotool"_s, {u"keydown"_s, u"shift"_s});
        const QString message = post({text(u"a"_s)});
        LinuxBench::output(u"xdotool"_s, {u"keyup"_s, u"shift"_s});
        QVERIFY2(message.contains(u"modifier"), qPrintable(message));
        QCOMPARE(post({text(u"a"_s)}), QString());
        const QByteArray told = receivedUntil("release 41");
        QVERIFY2(told.contains("press 41 0 61"), told.constData());
    }

    void keysNeverReachAnotherApplicationThanTheirReceiver()
    {
        const auto editor = LinuxBench::start(u"mousepad"_s);
        QVERIFY(m_bench.waitForActive(u"Mousepad"_s));
        const auto judged = Awaited::result(m_bench.workspace.frontmostApplication());
        startReceiver();
        const QString message = LinuxBench::errorOf(m_bench.keyboard.post({text(u"x"_s)}, 0us, judged));
        QCOMPARE(message, u"“Mousepad” is no longer in front, so no keys were sent."_s);
        QCOMPARE(post({text(u"a"_s)}), QString());
        const QByteArray told = receivedUntil("release 41");
        QVERIFY2(!told.contains("press 58"), told.constData());
    }

    // As an office suite: one process, several applications.
    void keysNeverReachAnotherApplicationOfTheSameProcess()
    {
        const auto suite = LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {u"Writer"_s, u"Calc"_s});
        QVERIFY(m_bench.waitForWindow(u"Writer"_s) && m_bench.waitForActive(u"Calc"_s));
        LinuxBench::output(u"xprop"_s, {u"-name"_s, u"Calc"_s, u"-f"_s, u"WM_CLASS"_s, u"8s"_s, u"-set"_s,
                                        u"WM_CLASS"_s, u"suite-calc"_s});
        const std::optional<DesktopWindow> calc = m_bench.waitForWindow(u"Calc"_s);
        const std::optional<DesktopWindow> writer = m_bench.waitForWindow(u"Writer"_s);
        m_bench.bringForward(*writer);
        const auto judged = Awaited::result(m_bench.workspace.frontmostApplication());
        m_bench.bringForward(*calc);
        const QString message = LinuxBench::errorOf(m_bench.keyboard.post({text(u"x"_s)}, 0us, judged));
        QVERIFY2(message.endsWith(u"is no longer in front, so no keys were sent."_s), qPrintable(message));
        m_bench.bringForward(*writer);
        QCOMPARE(LinuxBench::errorOf(m_bench.keyboard.post({text(u"x"_s)}, 0us, judged)), QString());
    }

    void typingStopsWhenAnotherApplicationGetsTheFocus()
    {
        startReceiver();
        const QByteArray before = keyMap();
        const QList<KeyStroke> longText(400, text(u"Aé"_s));
        const auto front = Awaited::result(m_bench.workspace.frontmostApplication());
        QCoro::Task<void> typing = m_bench.keyboard.post(longText, 15ms, front);
        QVERIFY(!receivedUntil("release c9").isEmpty());
        OwnWindow other;
        other.setTitle(u"Other"_s);
        other.show();
        const QString message = LinuxBench::errorOf(std::move(typing));
        QVERIFY2(message.contains(u"typing was stopped"), qPrintable(message));
        QVERIFY(!isModifierDown());
        QCOMPARE(keyMap(), before);
    }
};

QTEST_MAIN(LinuxKeyboardTest)
#include "LinuxKeyboardTest.moc"
