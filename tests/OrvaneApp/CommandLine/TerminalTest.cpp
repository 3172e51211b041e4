// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/TerminalBench.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TerminalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLineIsALineWhateverItHolds_data();
    void aLineIsALineWhateverItHolds();
    void aBlockKeepsItsLinesBehindThePrefix();
    void errorsGoToTheErrorOutput();
    void stylesAreForTerminalsWithColours();
    void progressIsForTerminals();
    void progressGivesWayToLines();
    void theEndOfALongDetailIsShown();
    void controlCharactersNeverReachTheTerminal();
    void aPromptLeavesTheCursorBehindIt();
};

void TerminalTest::aLineIsALineWhateverItHolds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("written");
    QTest::newRow("plain") << u"✓ Launching Safari"_s << u"✓ Launching Safari\n"_s;
    QTest::newRow("line breaks") << u"one\ntwo\r\nthree"_s << u"one⟨U+000A⟩two⟨U+000D⟩⟨U+000A⟩three\n"_s;
    QTest::newRow("escapes") << u"a\x1b[2Jb\x07"_s << u"a⟨U+001B⟩[2Jb⟨U+0007⟩\n"_s;
    QTest::newRow("C1 controls") << u"a\u009b2Jb"_s << u"a⟨U+009B⟩2Jb\n"_s;
    QTest::newRow("bidirectional override") << u"a\u202Eb"_s << u"a⟨U+202E⟩b\n"_s;
    QTest::newRow("what can be seen") << u"<|a|> می\u200Cشود"_s << u"<|a|> می\u200Cشود\n"_s;
    QTest::newRow("empty") << QString() << u"\n"_s;
}

void TerminalTest::aLineIsALineWhateverItHolds()
{
    QFETCH(QString, text);
    QFETCH(QString, written);
    TerminalBench bench;
    bench.terminal.line(text);
    QCOMPARE(bench.output(), written);
}

void TerminalTest::aBlockKeepsItsLinesBehindThePrefix()
{
    TerminalBench bench;
    bench.terminal.block(u"Run a custom AppleScript:\n\ttell me\rlies\x1b[A\n"_s, u"  │ "_s);
    QCOMPARE(bench.output(), u"  │ Run a custom AppleScript:\n  │ \ttell me⟨U+000D⟩lies⟨U+001B⟩[A\n  │ \n"_s);
}

void TerminalTest::errorsGoToTheErrorOutput()
{
    TerminalBench bench;
    bench.terminal.error(u"No model\nhere."_s);
    QCOMPARE(bench.output(), QString());
    QCOMPARE(bench.errors(), u"orvane: No model here.\n"_s);
}

void TerminalTest::stylesAreForTerminalsWithColours()
{
    TerminalBench colourful(TerminalBench::colourful);
    colourful.terminal.line(u"Done"_s, Terminal::Style::Good);
    QCOMPARE(colourful.output(), u"␛[32mDone␛[0m\n"_s);

    TerminalBench colourless(TerminalBench::colourless);
    colourless.terminal.line(u"Done"_s, Terminal::Style::Good);
    QCOMPARE(colourless.output(), u"Done\n"_s);

    TerminalBench plain;
    plain.terminal.line(u"Done"_s, Terminal::Style::Good);
    QCOMPARE(plain.output(), u"Done\n"_s);
}

void TerminalTest::progressIsForTerminals()
{
    TerminalBench plain;
    plain.terminal.showProgress(u"Thinking…"_s, u"{\"action\""_s);
    plain.terminal.hideProgress();
    QCOMPARE(plain.output(), QString());

    TerminalBench colourful(TerminalBench::colourful);
    colourful.terminal.showProgress(u"Thinking…"_s, u"{\"action\""_s);
    QCOMPARE(colourful.output(), u"␍␛[K␛[?7l⠋ Thinking…  ␛[2m{\"action\"␛[0m␛[?7h"_s);
    // The spinner advances by itself.
    QTRY_VERIFY(colourful.output().contains(u"⠙ Thinking…"_s));
    colourful.terminal.hideProgress();
    QVERIFY(colourful.output().endsWith(u"␍␛[K"_s));
    QCOMPARE(colourful.screen(), QString());
}

void TerminalTest::progressGivesWayToLines()
{
    TerminalBench bench(TerminalBench::colourless);
    bench.terminal.showProgress(u"Thinking…"_s);
    bench.terminal.line(u"✓ Launching Safari"_s);
    QVERIFY(bench.output().startsWith(
        u"␍␛[K␛[?7l⠋ Thinking…␛[?7h␍␛[K✓ Launching Safari\n␍␛[K␛[?7l⠋ Thinking…␛[?7h"_s));
}

void TerminalTest::theEndOfALongDetailIsShown()
{
    TerminalBench bench(TerminalBench::colourless);
    bench.terminal.showProgress(u"Thinking…"_s, QString(100, u'x') + u"the end"_s);
    // 60 columns: the spinner and a blank, nine for the text, two blanks, and one spare.
    QCOMPARE(bench.output(), u"␍␛[K␛[?7l⠋ Thinking…  …%1the end␛[?7h"_s.arg(QString(38, u'x')));
}

void TerminalTest::controlCharactersNeverReachTheTerminal()
{
    TerminalBench bench(TerminalBench::colourless);
    bench.terminal.showProgress(u"Typing \x1b]0;title\x07"_s, u"{\n\t\x1b[31m"_s);
    QCOMPARE(bench.output(), u"␍␛[K␛[?7l⠋ Typing ⟨U+001B⟩]0;title⟨U+0007⟩  {   [31m␛[?7h"_s);
}

void TerminalTest::aPromptLeavesTheCursorBehindIt()
{
    TerminalBench bench(TerminalBench::colourless);
    bench.terminal.showProgress(u"Thinking…"_s);
    bench.terminal.prompt(u"Allow this? (y/n)"_s);
    QVERIFY(bench.output().endsWith(u"␍␛[KAllow this? (y/n) "_s));
}

QTEST_GUILESS_MAIN(TerminalTest)
#include "TerminalTest.moc"
