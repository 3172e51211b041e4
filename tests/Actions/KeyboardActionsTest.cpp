// SPDX-License-Identifier: Apache-2.0
#include "ActionBench.h"
#include "Actions/Operations/Keys.h"
#include "Base/PlatformWords.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class KeyboardActionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeyHasItsCode_data();
    void everyKeyHasItsCode();
    void theKeyTableIsExact();
    void modifierNamesBecomeFlags_data();
    void modifierNamesBecomeFlags();
    void unknownKeysFail_data();
    void unknownKeysFail();
    void typedTextIsSentInPieces_data();
    void typedTextIsSentInPieces();
    void anEmptyTextTypesNothing();
    void withoutPermissionNothingIsPostedAndTheUserIsAskedEachTime();
    void withoutAPromptTheKeyIsPressed();
    void thePermissionComesBeforeTheKeyName();
    void thePlatformsErrorPassesThrough();
};

void KeyboardActionsTest::everyKeyHasItsCode_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("code");
    const QList<std::pair<const char *, int>> keys{
        {"a", 0},      {"s", 1},       {"d", 2},       {"f", 3},          {"h", 4},       {"g", 5},
        {"z", 6},      {"x", 7},       {"c", 8},       {"v", 9},          {"b", 11},      {"q", 12},
        {"w", 13},     {"e", 14},      {"r", 15},      {"y", 16},         {"t", 17},      {"1", 18},
        {"2", 19},     {"3", 20},      {"4", 21},      {"6", 22},         {"5", 23},      {"=", 24},
        {"9", 25},     {"7", 26},      {"-", 27},      {"8", 28},         {"0", 29},      {"]", 30},
        {"o", 31},     {"u", 32},      {"[", 33},      {"i", 34},         {"p", 35},      {"l", 37},
        {"j", 38},     {"'", 39},      {"k", 40},      {";", 41},         {"\\", 42},     {",", 43},
        {"/", 44},     {"n", 45},      {"m", 46},      {".", 47},         {"return", 36}, {"enter", 36},
        {"tab", 48},   {"space", 49},  {"delete", 51}, {"backspace", 51}, {"escape", 53}, {"esc", 53},
        {"left", 123}, {"right", 124}, {"down", 125},  {"up", 126},
    };
    QCOMPARE(keys.size(), 58);
    for (const auto &[key, code] : keys)
        QTest::newRow(key) << QString::fromLatin1(key) << code;
}

void KeyboardActionsTest::everyKeyHasItsCode()
{
    QFETCH(QString, key);
    QFETCH(int, code);
    ActionBench bench;
    QCOMPARE(bench.outcome(Keys::keystroke(key.toUpper(), {}, bench.services())), u"done"_s);
    const QList<KeyStroke> expected{{static_cast<std::uint16_t>(code), EventFlags(), QString()}};
    QCOMPARE(bench.desktop.keyboard.strokes, expected);
    QCOMPARE(bench.desktop.keyboard.pauses, QList<std::chrono::microseconds>{0us});
}

void KeyboardActionsTest::theKeyTableIsExact()
{
    QCOMPARE(Keys::keyCodes().size(), 58);
}

void KeyboardActionsTest::modifierNamesBecomeFlags_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<std::uint32_t>("mask");

    QTest::newRow("none") << QStringList() << 0x0u;
    QTest::newRow("command") << QStringList{u"command"_s} << 0x100000u;
    QTest::newRow("cmd") << QStringList{u"cmd"_s} << 0x100000u;
    QTest::newRow("shift") << QStringList{u"shift"_s} << 0x20000u;
    QTest::newRow("option") << QStringList{u"option"_s} << 0x80000u;
    QTest::newRow("alt") << QStringList{u"alt"_s} << 0x80000u;
    QTest::newRow("control") << QStringList{u"control"_s} << 0x40000u;
    QTest::newRow("ctrl") << QStringList{u"ctrl"_s} << 0x40000u;
    QTest::newRow("two, in any letter case") << QStringList{u"cmd"_s, u"SHIFT"_s} << 0x120000u;
    QTest::newRow("all four") << QStringList{u"alt"_s, u"ctrl"_s, u"cmd"_s, u"shift"_s} << 0x1E0000u;
    QTest::newRow("a name twice") << QStringList{u"cmd"_s, u"command"_s} << 0x100000u;
    QTest::newRow("unknown names are ignored") << QStringList{u"fn"_s, u"hyper"_s, u""_s} << 0x0u;
    QTest::newRow("part of a name is no name") << QStringList{u"comm"_s, u"shifts"_s} << 0x0u;
}

void KeyboardActionsTest::modifierNamesBecomeFlags()
{
    QFETCH(QStringList, names);
    QFETCH(std::uint32_t, mask);
    ActionBench bench;
    QCOMPARE(bench.outcome(Keys::keystroke(u"t"_s, names, bench.services())), u"done"_s);
    QCOMPARE(bench.desktop.keyboard.strokes.size(), 1);
    QCOMPARE(bench.desktop.keyboard.strokes.first().virtualKey, 17);
    QCOMPARE(bench.desktop.keyboard.strokes.first().flags.toInt(), mask);
}

void KeyboardActionsTest::unknownKeysFail_data()
{
    QTest::addColumn<QString>("key");
    for (const char *key : {"f5", "F5", "", " ", "home", "`", "ab", "forward delete"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void KeyboardActionsTest::unknownKeysFail()
{
    QFETCH(QString, key);
    ActionBench bench;
    QCOMPARE(bench.outcome(Keys::keystroke(key, {}, bench.services())),
             u"Error: Unsupported key “%1”."_s.arg(key));
    QCOMPARE(bench.journal(), QStringList());
}

void KeyboardActionsTest::typedTextIsSentInPieces_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("pieces");

    const QString twenty = u"abcdefghijklmnopqrst"_s;
    const QString family = u"👨‍👩‍👧‍👦"_s;
    QTest::newRow("short") << u"hello"_s << QStringList{u"hello"_s};
    QTest::newRow("20 characters") << twenty << QStringList{twenty};
    QTest::newRow("45 characters") << twenty + twenty + u"12345"_s << QStringList{twenty, twenty, u"12345"_s};
    QTest::newRow("a combining accent stays with its letter")
        << twenty.first(19) + u"e\u0301x"_s << QStringList{twenty.first(19) + u"e\u0301"_s, u"x"_s};
    QTest::newRow("an emoji of several code points is one character")
        << family.repeated(21) << QStringList{family.repeated(20), family};
    QTest::newRow("line breaks are typed") << u"a\nb\n"_s << QStringList{u"a\nb\n"_s};
}

void KeyboardActionsTest::typedTextIsSentInPieces()
{
    QFETCH(QString, text);
    QFETCH(QStringList, pieces);
    ActionBench bench;
    QCOMPARE(bench.outcome(Keys::typeText(text, std::nullopt, bench.services())), u"done"_s);
    QList<KeyStroke> expected;
    for (const QString &piece : std::as_const(pieces))
        expected.append({0, EventFlags(), piece});
    QCOMPARE(bench.desktop.keyboard.strokes, expected);
    QCOMPARE(bench.desktop.keyboard.pauses,
             QList<std::chrono::microseconds>(pieces.size(), std::chrono::microseconds(15'000)));
}

void KeyboardActionsTest::anEmptyTextTypesNothing()
{
    ActionBench bench;
    QCOMPARE(bench.outcome(Keys::typeText(QString(), std::nullopt, bench.services())), u"done"_s);
    QCOMPARE(bench.journal(), QStringList());
}

void KeyboardActionsTest::withoutPermissionNothingIsPostedAndTheUserIsAskedEachTime()
{
    ActionBench bench;
    bench.desktop.accessibility.trusted = false;
    QCOMPARE(bench.outcome(Keys::keystroke(u"t"_s, {}, bench.services())),
             u"Error: "_s + PlatformWords::current().keysRefusal);
    QCOMPARE(bench.outcome(Keys::typeText(u"x"_s, std::nullopt, bench.services())),
             u"Error: "_s + PlatformWords::current().typingRefusal);
    QCOMPARE(bench.desktop.accessibility.prompts, 2);
    QVERIFY(bench.desktop.keyboard.strokes.isEmpty());
}

void KeyboardActionsTest::withoutAPromptTheKeyIsPressed()
{
    ActionBench bench;
    bench.desktop.accessibility.trusted = false;
    bench.desktop.accessibility.trustGivenByUser = false;
    QCOMPARE(bench.outcome(Keys::keystroke(u"t"_s, {}, bench.services())), u"done"_s);
    QCOMPARE(bench.desktop.accessibility.prompts, 1);
    QCOMPARE(bench.desktop.keyboard.strokes.size(), 1);
}

void KeyboardActionsTest::thePermissionComesBeforeTheKeyName()
{
    ActionBench bench;
    bench.desktop.accessibility.trusted = false;
    const QString outcome = bench.outcome(Keys::keystroke(u"f5"_s, {}, bench.services()));
    QVERIFY(outcome.startsWith(u"Error: Accessibility permission is required."_s));
}

void KeyboardActionsTest::thePlatformsErrorPassesThrough()
{
    ActionBench bench;
    bench.desktop.journal.failures.insert(RecordedOperation::PostKeys, u"The target has gone."_s);
    QCOMPARE(bench.outcome(Keys::keystroke(u"t"_s, {}, bench.services())), u"Error: The target has gone."_s);
    QCOMPARE(bench.outcome(Keys::typeText(u"x"_s, std::nullopt, bench.services())),
             u"Error: The target has gone."_s);
}

QTEST_GUILESS_MAIN(KeyboardActionsTest)
#include "KeyboardActionsTest.moc"
