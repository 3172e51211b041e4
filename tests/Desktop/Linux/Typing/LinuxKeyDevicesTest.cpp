// SPDX-License-Identifier: Apache-2.0
// Typing while keyboard devices have different layouts: what arrives, and that every keymap is restored.
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/Typing/X11KeySymbols.h"
#include "Desktop/Linux/Typing/XtestKeyboard.h"
#include "Support/Awaited.h"
#include "Support/KeyboardDevices.h"

#include <QTest>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr std::uint8_t shiftKey = 50;
constexpr std::uint8_t rightAlternateKey = 108;

KeyStroke text(const QString &text)
{
    return {0, {}, text};
}

KeyStroke key(std::uint16_t code, EventFlags flags)
{
    return {code, flags, {}};
}

} // namespace

class LinuxKeyDevicesTest : public QObject
{
    Q_OBJECT

private:
    LinuxBench m_bench;
    std::unique_ptr<KeyboardDevices> m_keyboards;
    LinuxBench::Program m_receiver{nullptr, nullptr};

    QString post(const KeyStroke &stroke) { return m_bench.post({stroke}); }

    // Uses the physical keyboard last, so that applications see its keymap.
    void setLayouts(const QString &physical, const QString &sending)
    {
        KeyboardDevices::setLayout(m_keyboards->sending, sending);
        KeyboardDevices::setLayout(m_keyboards->physical, physical);
        m_keyboards->pressPhysicalKey(shiftKey);
    }

    // Types Return, and returns the receiver's lines up to it.
    QList<QByteArray> received()
    {
        const QString failure = post(key(36, {}));
        if (!failure.isEmpty())
            return {failure.toUtf8()};
        QByteArray told;
        const auto look = [this, &told] {
            told += m_receiver->readAllStandardOutput();
            return told.contains("release 1000004");
        };
        return QTest::qWaitFor(look, LinuxBench::patience) ? told.split('\n') : QList<QByteArray>();
    }

    // The text typed by the reported keys.
    QString receivedText()
    {
        QByteArray text;
        for (const QByteArray &line : received()) {
            if (line.startsWith("press "))
                text += QByteArray::fromHex(line.split(' ').value(3));
        }
        return QString::fromUtf8(text.chopped(1));
    }

private Q_SLOTS:
    void init()
    {
        m_keyboards = std::make_unique<KeyboardDevices>();
        QVERIFY(m_keyboards->isValid());
        m_receiver = LinuxBench::start(QString::fromLatin1(KEY_RECEIVER), {u"Receiver"_s});
        QVERIFY(m_bench.waitForActive(u"Receiver"_s));
    }

    void cleanup()
    {
        m_keyboards.reset();
        m_receiver.reset();
        QVERIFY(m_bench.waitForNoWindow(u"Receiver"_s));
    }

    void textArrivesWithAnyDeviceLayouts_data()
    {
        QTest::addColumn<QString>("physical");
        QTest::addColumn<QString>("sending");
        QTest::newRow("German, keys sent as American") << u"de"_s << u"us"_s;
        QTest::newRow("American, keys sent as German") << u"us"_s << u"de"_s;
        QTest::newRow("American, keys sent as French") << u"us"_s << u"fr"_s;
        QTest::newRow("Russian, keys sent as American") << u"ru"_s << u"us"_s;
        QTest::newRow("American, keys sent as Russian") << u"us"_s << u"ru"_s;
    }

    void textArrivesWithAnyDeviceLayouts()
    {
        QFETCH(QString, physical);
        QFETCH(QString, sending);
        setLayouts(physical, sending);
        // The second text requires lent keysyms.
        for (const QString &typed : {u"zylophone-yes zz {x} @ 1&"_s, u"yes zz é ß жук 漢字"_s}) {
            QCOMPARE(post(text(typed)), QString());
            QCOMPARE(receivedText(), typed);
        }
    }

    void lendingChangesNoOtherKeyboard()
    {
        setLayouts(u"de"_s, u"us"_s);
        const QByteArray physical = KeyboardDevices::map(m_keyboards->physical);
        const QByteArray sending = KeyboardDevices::map(m_keyboards->sending);
        QVERIFY(physical.contains("ssharp") && !sending.contains("ssharp"));

        const QList<KeyStroke> strokes(60, text(u"жук"_s));
        const auto front = Awaited::result(m_bench.workspace.frontmostApplication());
        QCoro::Task<void> typing = m_bench.keyboard.post(strokes, 15ms, front);
        const auto areSymbolsLent = [&] { return KeyboardDevices::map(m_keyboards->sending) != sending; };
        QVERIFY(QTest::qWaitFor(areSymbolsLent, LinuxBench::patience));
        QCOMPARE(KeyboardDevices::map(m_keyboards->physical), physical);
        QCOMPARE(LinuxBench::errorOf(std::move(typing)), QString());
        QCOMPARE(KeyboardDevices::map(m_keyboards->physical), physical);
        QCOMPARE(KeyboardDevices::map(m_keyboards->sending), sending);
    }

    void theActiveLanguageIsUsed_data()
    {
        QTest::addColumn<QString>("physical");
        QTest::addColumn<QString>("sending");
        QTest::newRow("all keyboards have both") << u"us,ru"_s << u"us,ru"_s;
        QTest::newRow("in another order") << u"us,ru"_s << u"ru,us"_s;
        QTest::newRow("keys are sent in one language only") << u"de,ru"_s << u"us"_s;
        QTest::newRow("keys are sent in three") << u"us,ru"_s << u"de,fr,ru"_s;
    }

    void theActiveLanguageIsUsed()
    {
        QFETCH(QString, physical);
        QFETCH(QString, sending);
        KeyboardDevices::setLayout(m_keyboards->sending, sending);
        KeyboardDevices::setLayout(m_keyboards->physical, physical, u"grp:toggle"_s);
        m_keyboards->pressPhysicalKey(rightAlternateKey);
        for (const QString &typed : {u"мир"_s, u"Hello zyx! 1&"_s}) {
            QCOMPARE(post(text(typed)), QString());
            QCOMPARE(receivedText(), typed);
        }
    }

    void aSlowApplicationUsesTheKeymapOfTheSentKeys()
    {
        setLayouts(u"de"_s, u"us"_s);
        const QByteArray physical = KeyboardDevices::map(m_keyboards->physical);
        const auto front = Awaited::result(m_bench.workspace.frontmostApplication());
        QCoro::Task<void> typing = m_bench.keyboard.post({text(u"yyy"_s), text(u"zzz"_s)}, 300ms, front);
        const auto isTyping = [&] { return KeyboardDevices::map(m_keyboards->master) != physical; };
        QVERIFY(QTest::qWaitFor(isTyping, LinuxBench::patience));
        ::kill(pid_t(m_receiver->processId()), SIGSTOP);
        QCOMPARE(LinuxBench::errorOf(std::move(typing)), QString());
        ::kill(pid_t(m_receiver->processId()), SIGCONT);
        QCOMPARE(receivedText(), u"yyyzzz"_s);
    }

    void commandWithADigitThatNeedsShiftArrivesWithoutShift_data()
    {
        QTest::addColumn<int>("virtualKey");
        QTest::addColumn<int>("digit");
        const QList<int> virtualKeys{29, 18, 19, 20, 21, 23, 22, 26, 28, 25}; // from 0 to 9
        for (int digit = 0; digit < 10; ++digit)
            QTest::addRow("%d", digit) << virtualKeys[digit] << digit;
    }

    void commandWithADigitThatNeedsShiftArrivesWithoutShift()
    {
        QFETCH(int, virtualKey);
        QFETCH(int, digit);
        setLayouts(u"fr"_s, u"fr"_s);
        const QByteArray map = KeyboardDevices::map(m_keyboards->sending);
        QCOMPARE(post(key(std::uint16_t(virtualKey), EventFlag::Command)), QString());
        const int code = 9 + (digit == 0 ? 10 : digit); // from 1 to 0 in a row
        const QByteArray wanted = "press " + QByteArray::number(0x30 + digit, 16) + " 4000000 ";
        const QList<QByteArray> lines = received();
        const auto isWanted = [&](const QByteArray &line) {
            return line.startsWith(wanted) && line.endsWith(' ' + QByteArray::number(code));
        };
        QVERIFY2(std::ranges::any_of(lines, isWanted), lines.join(" | ").constData());
        QCOMPARE(KeyboardDevices::map(m_keyboards->sending), map);
    }

    void withoutAModifierADigitThatNeedsShiftIsTyped()
    {
        setLayouts(u"fr"_s, u"fr"_s);
        QCOMPARE(post(key(18, {})), QString());
        QCOMPARE(receivedText(), u"1"_s);
    }

    void commandWithALetterOfAnotherLanguageIsSentByItsOwnKey()
    {
        KeyboardDevices::setLayout(u"us,ru"_s, u"grp:toggle"_s);
        m_keyboards->pressPhysicalKey(rightAlternateKey);
        QCOMPARE(post(key(37, EventFlag::Command)), QString());
        const QList<QByteArray> lines = received();
        const auto isControlL = [](const QByteArray &line) {
            return line.startsWith("press 4c 4000000 ") && line.endsWith(" 46");
        };
        QVERIFY2(std::ranges::any_of(lines, isControlL), lines.join(" | ").constData());
    }

    // Interrupting the connection drops its cleanup requests, as a crash would.
    void abandonedKeysymsAreRestoredByTheNextTypist()
    {
        setLayouts(u"de"_s, u"fr"_s);
        const QByteArray physical = KeyboardDevices::map(m_keyboards->physical);
        const QByteArray sending = KeyboardDevices::map(m_keyboards->sending);
        {
            X11Connection connection;
            const std::uint16_t device = findXtestKeyboard(connection);
            QCOMPARE(int(device), m_keyboards->sending);
            X11KeySymbols symbols(connection, device);
            symbols.lend({{10, XKB_KEY_1}, {93, XKB_KEY_Cyrillic_ya}});
            connection.requireAlive();
            const auto areSymbolsLent = [&] { return KeyboardDevices::map(m_keyboards->sending) != sending; };
            QVERIFY(QTest::qWaitFor(areSymbolsLent, LinuxBench::patience));
            connection.interrupt();
        }
        QVERIFY(KeyboardDevices::map(m_keyboards->sending) != sending);
        QCOMPARE(KeyboardDevices::map(m_keyboards->physical), physical);
        QCOMPARE(post(text(u"&1"_s)), QString());
        QCOMPARE(receivedText(), u"&1"_s);
        QCOMPARE(KeyboardDevices::map(m_keyboards->sending), sending);
        QCOMPARE(KeyboardDevices::map(m_keyboards->physical), physical);
    }

    void aForgedPropertyIsHarmless_data()
    {
        QTest::addColumn<QString>("note");
        QTest::newRow("cut off") << u"10, 49, 4, 0, 1"_s;
        QTest::newRow("too short for a key") << u"10, 49, 1, 0"_s;
        QTest::newRow("longer than there is room") << u"10, 49, 4294967295, 0, 1"_s;
        QTest::newRow("more symbols than words") << u"10, 49, 2, 0, 4294967295"_s;
        QTest::newRow("no such key") << u"3, 49, 2, 0, 0"_s;
    }

    void aForgedPropertyIsHarmless()
    {
        QFETCH(QString, note);
        const QByteArray sending = KeyboardDevices::map(m_keyboards->sending);
        LinuxBench::output(u"xprop"_s, {u"-root"_s, u"-f"_s, u"_ORVANE_LENT_SYMBOLS"_s, u"32c"_s, u"-set"_s,
                                        u"_ORVANE_LENT_SYMBOLS"_s, note});
        QCOMPARE(post(text(u"жук 1"_s)), QString());
        QCOMPARE(receivedText(), u"жук 1"_s);
        QCOMPARE(KeyboardDevices::map(m_keyboards->sending), sending);
    }
};

QTEST_MAIN(LinuxKeyDevicesTest)
#include "LinuxKeyDevicesTest.moc"
