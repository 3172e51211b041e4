// SPDX-License-Identifier: Apache-2.0
// Hot keys on real X servers: a private one without a window manager, where every key is free, and the
// desktop's, whose window manager grabs Alt+Space.
#include "Desktop/Linux/HotKeys/LinuxHotKeys.h"
#include "Desktop/Linux/Hands.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/XServer.h"
#include "Support/Awaited.h"

#include <QTest>

#include <xkbcommon/xkbcommon-keysyms.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

constexpr std::uint16_t spaceBar = 49;
constexpr std::uint16_t letterK = 40;
constexpr HotKeyIdentifier identifier{fourCharacterCode("ORVN"), 1};

// A program with hot keys. Option+K is a marker: once it is reported, all earlier keys have been.
struct Program
{
    SystemClock clock;
    X11Display display{clock};
    LinuxHotKeys hotKeys{display};
    int presses = 0;
    int marks = 0;
    std::shared_ptr<HotKeyReference> reference;
    std::shared_ptr<HotKeyReference> markReference;

    bool registerKey()
    {
        reference = Awaited::result(
            hotKeys.registerHotKey(spaceBar, HotKeyModifier::Option, identifier, [this] { ++presses; }));
        return reference != nullptr;
    }

    bool registerMark()
    {
        markReference = Awaited::result(hotKeys.registerHotKey(
            letterK, HotKeyModifier::Option, {identifier.signature, 2}, [this] { ++marks; }));
        return markReference != nullptr;
    }

    // The number of presses reported before the marker; -1 on timeout.
    int pressesUntilMark(Hands &hands)
    {
        const int before = marks;
        hands.strike(XKB_KEY_k, {XKB_KEY_Alt_L});
        return QTest::qWaitFor([this, before] { return marks > before; }, LinuxBench::patience) ? presses
                                                                                                : -1;
    }
};

} // namespace

class LinuxHotKeysTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<XServer> m_server;

    // Swaps the keycodes of the space bar and Insert.
    void swapSpaceAndInsert()
    {
        const QString display = QString::fromLatin1(m_server->display());
        QByteArray map = LinuxBench::output(u"xkbcomp"_s, {u"-xkb"_s, display, u"-"_s});
        QVERIFY(map.contains("<SPCE> = 65;") && map.contains("<INS> = 118;"));
        map.replace("<SPCE> = 65;", "<SPCE> = 118;").replace("<INS> = 118;", "<INS> = 65;");
        QProcess compiler;
        compiler.start(u"xkbcomp"_s, {u"-w"_s, u"0"_s, u"-"_s, display});
        compiler.write(map);
        compiler.closeWriteChannel();
        QVERIFY(compiler.waitForFinished(LinuxBench::patience));
        QCOMPARE(compiler.exitCode(), 0);
    }

private Q_SLOTS:
    void init()
    {
        m_server = std::make_unique<XServer>();
        QVERIFY(m_server->isRunning());
    }

    void cleanup() { m_server.reset(); }

    void aPressIsReportedOnceWithAnyLocks_data()
    {
        QTest::addColumn<QList<std::uint32_t>>("locks");
        QTest::newRow("none") << QList<std::uint32_t>();
        QTest::newRow("Caps Lock") << QList<std::uint32_t>{XKB_KEY_Caps_Lock};
        QTest::newRow("Num Lock") << QList<std::uint32_t>{XKB_KEY_Num_Lock};
        QTest::newRow("both") << QList<std::uint32_t>{XKB_KEY_Caps_Lock, XKB_KEY_Num_Lock};
    }

    void aPressIsReportedOnceWithAnyLocks()
    {
        QFETCH(QList<std::uint32_t>, locks);
        Program program;
        QVERIFY(program.registerKey());
        QVERIFY(program.registerMark());
        Hands hands;
        for (const std::uint32_t each : locks) {
            QVERIFY(hands.has(each));
            hands.strike(each, {});
        }
        hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
        QCOMPARE(program.pressesUntilMark(hands), 1);
        hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
        QCOMPARE(program.pressesUntilMark(hands), 2);
    }

    void aHeldKeyIsReportedOnce()
    {
        Program program;
        QVERIFY(program.registerKey());
        QVERIFY(program.registerMark());
        Hands hands;
        hands.down(XKB_KEY_Alt_L);
        // A press without a previous release is a repeat.
        for (int i = 0; i < 5; ++i)
            hands.down(XKB_KEY_space);
        hands.up(XKB_KEY_space);
        hands.up(XKB_KEY_Alt_L);
        QCOMPARE(program.pressesUntilMark(hands), 1);
        hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
        QCOMPARE(program.pressesUntilMark(hands), 2);
    }

    void otherModifiersDoNotMatch()
    {
        Program program;
        QVERIFY(program.registerKey());
        QVERIFY(program.registerMark());
        Hands hands;
        hands.strike(XKB_KEY_space, {});
        hands.strike(XKB_KEY_space, {XKB_KEY_Shift_L});
        hands.strike(XKB_KEY_space, {XKB_KEY_Control_L});
        hands.strike(XKB_KEY_space, {XKB_KEY_Shift_L, XKB_KEY_Alt_L});
        QCOMPARE(program.pressesUntilMark(hands), 0);
    }

    void droppingTheReferenceReleasesTheKey()
    {
        Program program;
        QVERIFY(program.registerKey());
        QVERIFY(program.registerMark());
        program.reference.reset();
        Hands hands;
        hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
        QCOMPARE(program.pressesUntilMark(hands), 0);
    }

    void aKeyOwnedByAnotherProgramIsRefused()
    {
        Program other;
        QVERIFY(other.registerKey());
        QVERIFY(other.registerMark());
        Program program;
        QVERIFY(!program.registerKey());
        // It still works for its owner.
        Hands hands;
        hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
        QCOMPARE(other.pressesUntilMark(hands), 1);
        QCOMPARE(program.presses, 0);
        other.reference.reset();
        QTRY_VERIFY_WITH_TIMEOUT(program.registerKey(), LinuxBench::patience);
    }

    void aKeyOwnedByTheWindowManagerIsRefused()
    {
        m_server.reset();
        Program program;
        QVERIFY(!program.registerKey());
        // Other keys are still available.
        QVERIFY(program.registerMark());
        Hands hands;
        QCOMPARE(program.pressesUntilMark(hands), 0);
    }

    void theKeyIsGrabbedAgainAfterAKeymapChange()
    {
        Program program;
        QVERIFY(program.registerKey());
        QVERIFY(program.registerMark());
        Hands hands;
        swapSpaceAndInsert();
        // The program learns of the new keymap with a delay, so retry.
        const auto isTold = [&] {
            hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
            return program.pressesUntilMark(hands) > 0;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isTold(), LinuxBench::patience);
        const int presses = program.presses;
        hands.strike(XKB_KEY_Insert, {XKB_KEY_Alt_L});
        QCOMPARE(program.pressesUntilMark(hands), presses);
    }

    void aSecondLayoutMakesNoDifference()
    {
        Program program;
        LinuxBench::output(u"setxkbmap"_s, {u"-layout"_s, u"us,ru"_s, u"-option"_s, u"grp:toggle"_s});
        QVERIFY(program.registerKey());
        QVERIFY(program.registerMark());
        Hands hands;
        // Switches the layout.
        hands.strike(XKB_KEY_ISO_Next_Group, {});
        QTRY_VERIFY_WITH_TIMEOUT(hands.has(XKB_KEY_Cyrillic_ya), LinuxBench::patience);
        hands.strike(XKB_KEY_space, {XKB_KEY_Alt_L});
        QTRY_COMPARE_WITH_TIMEOUT(program.presses, 1, LinuxBench::patience);
    }

    void aHungServerFailsRegistration()
    {
        Program program;
        m_server->signal(SIGSTOP);
        QVERIFY(!program.registerKey());
        m_server->signal(SIGCONT);
        QTRY_VERIFY_WITH_TIMEOUT(program.registerKey(), LinuxBench::patience);
    }
};

QTEST_MAIN(LinuxHotKeysTest)
#include "LinuxHotKeysTest.moc"
