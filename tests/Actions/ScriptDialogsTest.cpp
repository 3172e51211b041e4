// SPDX-License-Identifier: Apache-2.0
// What scripts ask the user, and what they get back.
#include "ActionBench.h"
#include "Actions/Scripts/DesktopScriptHost.h"
#include "Scripting/ScriptInterpreter.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> described(QString source, Desktop desktop)
{
    DesktopScriptHost host(desktop);
    const ScriptValue value = co_await ScriptInterpreter::run(source, host);
    co_return ScriptCoercion::source(value);
}

// "[No] Yes*": the cancel button in brackets, the default button with a star.
QString buttonsOf(const Dialog &dialog)
{
    QStringList names;
    for (int i = 0; i < dialog.buttons.size(); ++i) {
        QString name = dialog.buttons.at(i);
        if (i == dialog.cancelButton)
            name = u'[' + name + u']';
        if (i == dialog.defaultButton)
            name += u'*';
        names.append(name);
    }
    return names.join(u' ');
}

QString describedDialog(const Dialog &dialog)
{
    QStringList parts{dialog.text};
    if (!dialog.title.isEmpty())
        parts << u"title "_s + dialog.title;
    if (!dialog.message.isEmpty())
        parts << u"message "_s + dialog.message;
    parts << buttonsOf(dialog);
    if (dialog.answer)
        parts << (dialog.hidesAnswer ? u"hidden field "_s : u"field "_s) + *dialog.answer;
    if (dialog.items)
        parts << u"items "_s + dialog.items->join(u'/');
    for (const int index : dialog.chosen)
        parts << u"chosen %1"_s.arg(index);
    if (dialog.takesSeveral)
        parts << u"several"_s;
    if (dialog.takesNone)
        parts << u"none"_s;
    if (dialog.givesUpAfter)
        parts << u"%1 ms"_s.arg(dialog.givesUpAfter->count());
    return parts.join(u"; "_s);
}

// Runs a script; the user answers each of its questions in the same way.
class DialogBench
{
public:
    explicit DialogBench(const std::optional<DialogAnswer> &answer) : m_answer(answer)
    {
        QObject::connect(&m_bench.desktop.dialogs, &Dialogs::pendingChanged, [this] { takeQuestion(); });
    }

    QString run(const QString &source) { return ActionBench::outcome(described(source, m_bench.services())); }

    QStringList questions;

private:
    void takeQuestion()
    {
        Dialogs &dialogs = m_bench.desktop.dialogs;
        if (!dialogs.pending())
            return;
        questions.append(describedDialog(*dialogs.pending()));
        if (m_answer)
            dialogs.answer(*m_answer);
        else
            dialogs.withdraw();
    }

    ActionBench m_bench;
    std::optional<DialogAnswer> m_answer;
};

} // namespace

class ScriptDialogsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asks_data();
    void asks();
    void returns_data();
    void returns();
    void fails_data();
    void fails();
    void failsWithoutAUser();
};

void ScriptDialogsTest::asks_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("question");
    const auto row = [](const char *source, const char *question) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(question);
    };
    row("display dialog \"Go on?\"", "Go on?; [Cancel] OK*");
    row("display dialog 42", "42; [Cancel] OK*");
    row("display dialog \"a\" with title \"T\" with icon caution", "a; title T; [Cancel] OK*");
    row("display dialog \"a\" buttons {\"No\", \"Yes\"}", "a; No Yes");
    row("display dialog \"a\" buttons {\"Cancel\", \"Go\"} default button 2", "a; [Cancel] Go*");
    row("display dialog \"a\" buttons {\"No\", \"Yes\"} default button \"Yes\" cancel button \"No\"",
        "a; [No] Yes*");
    row("display dialog \"a\" default answer \"b\"", "a; [Cancel] OK*; field b");
    row("display dialog \"a\" default answer \"\" with hidden answer", "a; [Cancel] OK*; hidden field ");
    row("display dialog \"a\" giving up after 1.5", "a; [Cancel] OK*; 1500 ms");
    row("display alert \"a\"", "a; OK*");
    row("display alert \"a\" message \"b\" as critical", "a; message b; OK*");
    row("display alert \"a\" buttons {\"Cancel\", \"Go\"}", "a; Cancel Go*");
    row("display alert \"a\" buttons {\"No\", \"Go\"} default button \"No\" cancel button 1", "a; [No]* Go");
    row("choose from list {\"a\", 2}", "Please make your selection:; [Cancel] OK*; items a/2");
    row("choose from list {\"a\"} with prompt \"p\" with title \"t\" OK button name \"Go\" "
        "cancel button name \"No\"",
        "p; title t; [No] Go*; items a");
    row("choose from list {\"a\", \"b\", \"c\"} with prompt \"p\" default items {\"c\", \"x\", \"b\"} "
        "with multiple selections allowed and empty selection allowed",
        "p; [Cancel] OK*; items a/b/c; chosen 2; chosen 1; several; none");
    row("choose from list {\"a\", \"b\"} with prompt \"p\" default items {\"b\", \"a\"}",
        "p; [Cancel] OK*; items a/b; chosen 1");
}

void ScriptDialogsTest::asks()
{
    QFETCH(QString, source);
    DialogBench bench(DialogAnswer{0, {}, {}});
    bench.run(source);
    QCOMPARE(bench.questions.size(), 1);
    QTEST(bench.questions.first(), "question");
}

void ScriptDialogsTest::returns_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QList<int>>("chosen");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *source, int button, const char *typed, const QList<int> &chosen,
                        const char *result) {
        QTest::newRow(qPrintable(u"%1 → %2"_s.arg(QString::fromUtf8(source)).arg(button)))
            << QString::fromUtf8(source) << button << QString::fromUtf8(typed) << chosen
            << QString::fromUtf8(result);
    };
    row("display dialog \"a\"", 1, "", {}, "{button returned:\"OK\"}");
    row("display dialog \"a\"", 0, "", {}, "Error: User canceled.");
    row("try\ndisplay dialog \"a\"\non error m number n\nreturn {m, n}\nend try", 0, "", {},
        "{\"User canceled.\", -128}");
    row("display dialog \"a\" buttons {\"No\", \"Yes\"}", 0, "", {}, "{button returned:\"No\"}");
    row("button returned of (display dialog \"a\" buttons {\"No\", \"Yes\"})", 1, "", {}, "\"Yes\"");
    row("display dialog \"a\" default answer \"b\"", 1, "typed", {},
        "{button returned:\"OK\", text returned:\"typed\"}");
    row("display dialog \"a\" giving up after 5", 1, "", {}, "{button returned:\"OK\", gave up:false}");
    row("display dialog \"a\" giving up after 5", Dialog::noButton, "", {},
        "{button returned:\"\", gave up:true}");
    row("display alert \"a\" buttons {\"Cancel\", \"Go\"}", 0, "", {}, "{button returned:\"Cancel\"}");
    row("display alert \"a\" buttons {\"No\", \"Go\"} cancel button 1", 0, "", {}, "Error: User canceled.");
    row("choose from list {\"a\", 2, \"c\"}", 1, "", {1}, "{2}");
    row("choose from list {\"a\", 2, \"c\"} with multiple selections allowed", 1, "", {0, 2},
        "{\"a\", \"c\"}");
    row("choose from list {\"a\"} with empty selection allowed", 1, "", {}, "{}");
    row("choose from list {\"a\"}", 0, "", {}, "false");
    row("tell application \"Finder\" to display dialog \"a\"", 1, "", {}, "{button returned:\"OK\"}");
}

void ScriptDialogsTest::returns()
{
    QFETCH(QString, source);
    QFETCH(int, button);
    QFETCH(QString, typed);
    QFETCH(QList<int>, chosen);
    DialogBench bench(DialogAnswer{button, typed, chosen});
    QTEST(bench.run(source), "result");
}

void ScriptDialogsTest::fails_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *source, const char *error) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(error);
    };
    row("display dialog \"a\" buttons {}", "A dialog has one to three buttons.");
    row("display dialog \"a\" buttons {1, 2, 3, 4}", "A dialog has one to three buttons.");
    row("display dialog \"a\" default button 3", "The default button 3 isn't one of the buttons.");
    row("display dialog \"a\" default button 0", "The default button 0 isn't one of the buttons.");
    row("display dialog \"a\" cancel button \"x\"", "The cancel button \"x\" isn't one of the buttons.");
    row("choose file", "Scripts can't ask for files on this computer (“choose file”).");
    row("choose folder", "Scripts can't ask for files on this computer (“choose folder”).");
}

void ScriptDialogsTest::fails()
{
    QFETCH(QString, source);
    QFETCH(QString, error);
    DialogBench bench(DialogAnswer{1, {}, {}});
    QCOMPARE(bench.run(source), u"Error: "_s + error);
    QCOMPARE(bench.questions, QStringList());
}

void ScriptDialogsTest::failsWithoutAUser()
{
    ActionBench nobody;
    QCOMPARE(ActionBench::outcome(described(u"display dialog \"a\""_s, nobody.services())),
             u"Error: There is nobody to ask."_s);
    DialogBench withdrawn(std::nullopt);
    QCOMPARE(withdrawn.run(u"choose from list {\"a\"}"_s), u"Error: User canceled."_s);
}

QTEST_GUILESS_MAIN(ScriptDialogsTest)
#include "ScriptDialogsTest.moc"
