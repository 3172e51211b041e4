// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/TerminalDialogs.h"
#include "OrvaneApp/CommandLine/PseudoTerminal.h"
#include "OrvaneApp/CommandLine/TerminalBench.h"
#include "Support/Awaited.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

Dialog message()
{
    Dialog dialog;
    dialog.title = u"Backup"_s;
    dialog.text = u"Go on?\nIt takes an hour."_s;
    dialog.buttons = {u"Later"_s, u"Now"_s};
    dialog.defaultButton = 1;
    return dialog;
}

Dialog textQuestion()
{
    Dialog dialog = message();
    dialog.answer = u"Ann"_s;
    return dialog;
}

Dialog listQuestion()
{
    Dialog dialog;
    dialog.text = u"Which one?"_s;
    dialog.items = QStringList{u"Red"_s, u"Green"_s, u"Blue"_s};
    dialog.buttons = {u"Cancel"_s, u"OK"_s};
    dialog.cancelButton = 0;
    dialog.defaultButton = 1;
    return dialog;
}

// A question asked at a terminal.
class DialogBench
{
public:
    enum class Person { Present, Absent };

    explicit DialogBench(const Dialog &dialog, Person person = Person::Present)
        : terminal(person == Person::Present ? TerminalBench::colourless : TerminalBench::plain),
          answers(person == Person::Present ? keyboard.descriptor() : -1),
          questions(dialogs, terminal.terminal, answers)
    {
        settling = Awaited::settle(dialogs.ask(dialog), outcome);
    }

    // Types lines, each when it is asked for.
    void type(const QStringList &lines)
    {
        for (const QString &line : lines) {
            const qsizetype before = terminal.output().count(u':');
            QVERIFY(keyboard.type(line.toUtf8() + '\n'));
            QVERIFY(QTest::qWaitFor(
                [&] { return outcome->isSettled() || terminal.output().count(u':') > before; }));
        }
    }

    // "1 “typed” 0 2": the button, the text and the chosen items; "none" if the dialog was withdrawn.
    QString answer()
    {
        if (!Awaited::waitFor(outcome))
            return u"timeout"_s;
        const std::optional<DialogAnswer> &given = *outcome->value;
        if (!given)
            return u"none"_s;
        QString text = u"%1 “%2”"_s.arg(given->button).arg(given->text);
        for (const int index : given->chosen)
            text += u" %1"_s.arg(index);
        return text;
    }

    Dialogs dialogs;
    PseudoTerminal keyboard;
    TerminalBench terminal;
    AnswerReader answers;
    TerminalDialogs questions;
    std::shared_ptr<Awaited::Outcome<std::optional<DialogAnswer>>> outcome =
        std::make_shared<Awaited::Outcome<std::optional<DialogAnswer>>>();
    QCoro::Task<void> settling;
};

} // namespace

class TerminalDialogsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheQuestion();
    void showsNoControlCharacters();
    void takesTheAnswer_data();
    void takesTheAnswer();
    void withoutATerminalTheDialogIsCancelled();
    void hiddenTextIsNotTyped();
    void aTerminalThatGoesAwayCancels();
    void aWithdrawnQuestionEndsItsLine();
};

void TerminalDialogsTest::showsTheQuestion()
{
    DialogBench bench(message());
    QVERIFY(bench.questions.isAsking());
    QCOMPARE(bench.terminal.screen(), u"? A script asks\n"
                                      "  │ Backup\n"
                                      "  │ Go on?\n"
                                      "  │ It takes an hour.\n"
                                      "  │ 1 Later\n"
                                      "  │ 2 Now\n"
                                      "Number (Return for 2): "_s);
    bench.type({u"2"_s});
    QCOMPARE(bench.answer(), u"1 “”"_s);
    QVERIFY(!bench.questions.isAsking());
}

void TerminalDialogsTest::showsNoControlCharacters()
{
    Dialog dialog = textQuestion();
    dialog.text = u"\x1b[2J"_s;
    dialog.answer = u"\x1b[2J\nAllow this? (y/n)"_s;
    dialog.buttons = {u"\x1b[2J"_s};
    DialogBench bench(dialog);
    bench.type({u"x"_s});
    QVERIFY(!bench.terminal.output().contains(u"␛[2J"_s));
    QVERIFY(!bench.terminal.screen().contains(u"\nAllow"_s));
}

void TerminalDialogsTest::takesTheAnswer_data()
{
    QTest::addColumn<int>("kind"); // 0: message, 1: text, 2: list, 3: several of a list
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("answer");
    const auto row = [](const char *name, int kind, const QStringList &lines, const QString &answer) {
        QTest::newRow(name) << kind << lines << answer;
    };
    row("a button", 0, {u"1"_s}, u"0 “”"_s);
    row("the default button", 0, {u""_s}, u"1 “”"_s);
    row("no such button", 0, {u"3"_s, u"0"_s, u"Now"_s, u"2"_s}, u"1 “”"_s);
    row("a text", 1, {u"Bob Ö"_s, u""_s}, u"1 “Bob Ö”"_s);
    row("the initial text", 1, {u""_s, u"1"_s}, u"0 “Ann”"_s);
    row("an item", 2, {u"2"_s}, u"1 “” 1"_s);
    row("no item", 2, {u""_s, u"4"_s, u"x"_s, u"1 2"_s, u"3"_s}, u"1 “” 2"_s);
    row("cancelling", 2, {u"c"_s}, u"0 “”"_s);
    row("several items", 3, {u" 3  1 3"_s}, u"1 “” 0 2"_s);
    row("the items chosen at first", 3, {u""_s}, u"1 “” 1"_s);
}

void TerminalDialogsTest::takesTheAnswer()
{
    QFETCH(int, kind);
    QFETCH(QStringList, lines);
    const QList<Dialog> dialogs{message(), textQuestion(), listQuestion(), listQuestion()};
    Dialog dialog = dialogs.at(kind);
    if (kind == 3) {
        dialog.takesSeveral = true;
        dialog.chosen = {1};
    }
    DialogBench bench(dialog);
    bench.type(lines);
    QTEST(bench.answer(), "answer");
}

void TerminalDialogsTest::withoutATerminalTheDialogIsCancelled()
{
    DialogBench bench(message(), DialogBench::Person::Absent);
    QCOMPARE(bench.answer(), u"none"_s);
    QVERIFY(bench.terminal.output().endsWith(
        u"  There is no terminal to ask at, so the dialog is cancelled.\n"_s));
}

void TerminalDialogsTest::hiddenTextIsNotTyped()
{
    Dialog dialog = textQuestion();
    dialog.hidesAnswer = true;
    DialogBench bench(dialog);
    QCOMPARE(bench.answer(), u"none"_s);
    QVERIFY(bench.terminal.output().contains(u"Hidden text can't be typed at a terminal"_s));
}

void TerminalDialogsTest::aTerminalThatGoesAwayCancels()
{
    DialogBench bench(message());
    bench.keyboard.hangUp();
    QCOMPARE(bench.answer(), u"none"_s);
}

void TerminalDialogsTest::aWithdrawnQuestionEndsItsLine()
{
    DialogBench bench(message());
    bench.dialogs.withdraw();
    QCOMPARE(bench.answer(), u"none"_s);
    QVERIFY(bench.terminal.screen().endsWith(u"Number (Return for 2): \n"_s));
    QVERIFY(!bench.questions.isAsking());
}

QTEST_GUILESS_MAIN(TerminalDialogsTest)
#include "TerminalDialogsTest.moc"
