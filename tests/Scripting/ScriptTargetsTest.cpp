// SPDX-License-Identifier: Apache-2.0
#include "SampleHost.h"
#include "Scripting/ScriptError.h"
#include "Scripting/ScriptInterpreter.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

// What a script says to applications.
class ScriptTargetsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sends_data();
    void sends();
    void usesAnswers_data();
    void usesAnswers();
    void whatIsUnknownIsAnError_data();
    void whatIsUnknownIsAnError();
};

namespace {

QString run(const QString &source, SampleHost &host)
{
    try {
        return ScriptCoercion::source(Awaited::result(ScriptInterpreter::run(source, host)));
    } catch (const ScriptError &error) {
        return u"Error: "_s + error.errorDescription();
    }
}

} // namespace

void ScriptTargetsTest::sends_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("sent");
    const auto row = [](const char *source, const char *sent) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(sent);
    };
    row("tell application \"Safari\" to activate", "Safari: activate");
    row("tell app \"Safari\"\nactivate\nend tell", "Safari: activate");
    row("activate application \"Safari\"", "Safari: activate application \"Safari\"");
    row("quit application \"Mail\"", "Mail: quit application \"Mail\"");
    row("tell application \"Mail\" to quit saving no", "Mail: quit, saving no");
    row("beep 2", "beep 2");
    row("open location \"https://example.org\"", "open location \"https://example.org\"");
    row("set the clipboard to \"abc\"", "set the clipboard to \"abc\"");
    row("set volume output volume 50", "set volume, output volume 50");
    row("set volume with output muted", "set volume, output muted true");
    row("display notification \"Done\" with title \"Task\" subtitle \"Now\"",
        "display notification \"Done\", subtitle \"Now\", with title \"Task\"");
    row("display dialog \"Sure?\" buttons {\"No\", \"Yes\"} default button \"Yes\" with icon caution",
        "display dialog \"Sure?\", buttons {\"No\", \"Yes\"}, default button \"Yes\", with icon caution");
    row("display alert \"Oh\" message \"No\" as critical",
        "display alert \"Oh\", as critical, message \"No\"");
    row("choose from list {\"a\", \"b\"} with prompt \"Which\" with multiple selections allowed",
        "choose from list {\"a\", \"b\"}, multiple selections allowed true, with prompt \"Which\"");
    row("path to desktop folder", "path to desktop folder");
    row("do shell script \"ls\" with administrator privileges",
        "do shell script \"ls\", administrator privileges true");
    row("tell application \"System Events\" to keystroke \"v\" using command down",
        "System Events: keystroke \"v\", using command down");
    row("tell application \"System Events\" to keystroke \"a\" using {command down, shift down}",
        "System Events: keystroke \"a\", using {command down, shift down}");
    row("tell application \"System Events\"\nkey code 36\nend tell", "System Events: key code 36");
    row("tell application \"System Events\" to tell process \"Mail\" to click button \"OK\" of window 1",
        "System Events: click button \"OK\" of window 1 of process \"Mail\" of application \"System "
        "Events\"");
    row("tell application \"System Events\"\ntell process \"TextEdit\"\n"
        "click menu item \"Save\" of menu \"File\" of menu bar 1\nend tell\nend tell",
        "System Events: click menu item \"Save\" of menu \"File\" of menu bar 1 of process \"TextEdit\" of "
        "application \"System Events\"");
    row("tell application \"Finder\" to make new folder at desktop with properties {name:\"New\"}",
        "Finder: make, at desktop of application \"Finder\", new folder, with properties {name:\"New\"}");
    row("tell application \"Finder\" to delete file \"a.txt\" of home",
        "Finder: delete file \"a.txt\" of home of application \"Finder\"");
    row("tell application \"Finder\" to reveal file \"a\"",
        "Finder: reveal file \"a\" of application \"Finder\"");
    row("tell application \"Finder\" to empty trash", "Finder: empty trash of application \"Finder\"");
    row("tell application \"System Events\" to tell appearance preferences to set dark mode to true",
        "System Events: set dark mode of appearance preferences of application \"System Events\", to true");
    row("tell application \"System Events\" to tell every desktop to set picture to \"/a.png\"",
        "System Events: set picture of every desktop of application \"System Events\", to \"/a.png\"");
    row("tell application \"System Events\" to set picture of desktop 2 to \"/a.png\"",
        "System Events: set picture of desktop 2 of application \"System Events\", to \"/a.png\"");
    row("tell application \"Finder\" to get name of file 1 of desktop",
        "Finder: get name of file 1 of desktop of application \"Finder\"");
    row("tell application \"Music\" to playpause", "Music: playpause");
    row("tell application \"Music\" to next track", "Music: next track");
    row("tell application \"Music\" to set sound volume to 40",
        "Music: set sound volume of application \"Music\", to 40");
    row("tell application \"Music\" to get name of current track",
        "Music: get name of current track of application \"Music\"");
    row("tell application \"Music\"\nset n to artist of current track\nend tell",
        "Music: get artist of current track of application \"Music\"");
    row("tell application \"Safari\" to make new tab at window 1 with properties {URL:\"https://a.b\"}",
        "Safari: make, at window 1 of application \"Safari\", new \"\t\", with properties "
        "{url:\"https://a.b\"}");
    row("tell application \"Finder\" to get name of every window",
        "Finder: get name of every window of application \"Finder\"");
    row("tell application \"Finder\" to count windows", "Finder: get every window of application \"Finder\"");
    row("return application \"Mail\" is running", "Mail: get running of application \"Mail\"");
    row("if application \"Mail\" is not running then return 1", "Mail: get running of application \"Mail\"");
    row("tell application \"System Events\" to set frontmost of process \"X\" to true",
        "System Events: set frontmost of process \"X\" of application \"System Events\", to true");
    row("tell application \"Finder\" to get frontmost", "Finder: get frontmost of application \"Finder\"");
    row("tell application \"Finder\" to exists folder \"a\"",
        "Finder: exists folder \"a\" of application \"Finder\"");
    row("tell application \"Finder\"\nif folder \"a\" exists then return 1\nend tell",
        "Finder: exists folder \"a\" of application \"Finder\"");
    row("get the name of front window of application \"Mail\"",
        "Mail: get name of window 1 of application \"Mail\"");
    row("tell application \"Finder\" to move file \"a\" to trash",
        "Finder: move file \"a\" of application \"Finder\", to trash of application \"Finder\"");
    row("tell application \"Finder\" to open file \"a\" using \"b\"",
        "Finder: open file \"a\" of application \"Finder\", using \"b\"");
}

void ScriptTargetsTest::sends()
{
    QFETCH(QString, source);
    SampleHost host;
    run(source, host);
    QVERIFY2(!host.journal.isEmpty(), "nothing was sent");
    QTEST(host.journal.first(), "sent");
}

void ScriptTargetsTest::usesAnswers_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *source, const char *expected) {
        QTest::newRow(source) << QString::fromUtf8(source) << QString::fromUtf8(expected);
    };
    row("tell application \"X\" to return name of window 1", "\"First\"");
    row("tell application \"X\"\nset w to window 1\nreturn name of w\nend tell", "\"First\"");
    row("tell application \"X\" to return word 2 of title", "\"two\"");
    row("tell application \"X\" to return length of title", "7");
    row("tell application \"X\" to return title & \"!\"", "\"one two!\"");
    row("tell application \"X\"\nset title to \"a\"\nend tell", "\"a\"");
    row("set title to \"mine\"\ntell application \"X\" to return title", "\"mine\"");
    row("tell application \"X\" to return count windows", "2");
    row("tell application \"X\" to return name of every window whose size > 5", "{\"Second\"}");
    row("tell application \"X\"\nreturn name of first window whose name contains \"eco\"\nend tell",
        "\"Second\"");
    row("tell application \"X\" to count (every window whose size > 100)", "0");
    row("tell application \"X\"\nrepeat with w in windows\nset n to name of w\nend repeat\nreturn n\nend "
        "tell",
        "\"Second\"");
    row("return the clipboard", "\"copied\"");
    row("return \"[\" & (the clipboard) & \"]\"", "\"[copied]\"");
    row("return button returned of (display dialog \"Go?\")", "\"OK\"");
    row("set r to display dialog \"Go?\"\nreturn r's button returned", "\"OK\"");
    row("try\ntell application \"X\" to play\non error number n\nreturn n\nend try", "-1708");
    row("tell application \"X\"\nset title to \"b\"\nend tell\nreturn title",
        "Error: The variable title is not defined.");
}

void ScriptTargetsTest::usesAnswers()
{
    QFETCH(QString, source);
    SampleHost host;
    const auto window = [](qint64 number) {
        ScriptObject object;
        object.kind = ScriptObject::Kind::Element;
        object.name = u"window"_s;
        object.form = ScriptObject::Form::Index;
        object.key = number;
        object.container = ScriptObject::application(u"X"_s).as<ScriptValue::Object>();
        object.isValue = true;
        return ScriptValue(std::make_shared<const ScriptObject>(object));
    };
    const QString x = u" of application \"X\""_s;
    host.answers = {
        {u"X: get name of window 1"_s + x, u"First"_s},
        {u"X: get name of window 2"_s + x, u"Second"_s},
        {u"X: get size of window 1"_s + x, qint64(5)},
        {u"X: get size of window 2"_s + x, qint64(6)},
        {u"X: get window 1"_s + x, window(1)},
        {u"X: get every window"_s + x, ScriptValue::list({window(1), window(2)})},
        {u"X: get title"_s + x, u"one two"_s},
        {u"X: set title"_s + x + u", to \"a\""_s, ScriptValue()},
        {u"X: set title"_s + x + u", to \"b\""_s, ScriptValue()},
        {u"the clipboard"_s, u"copied"_s},
        {u"display dialog \"Go?\""_s, ScriptValue::record({{u"button returned"_s, u"OK"_s}})},
    };
    QTEST(run(source, host), "expected");
}

void ScriptTargetsTest::whatIsUnknownIsAnError_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a command") << u"tell application \"X\" to play"_s
                               << u"Error: X doesn’t understand “play”."_s;
    QTest::newRow("a standard addition") << u"beep"_s << u"Error: The script doesn’t understand “beep”."_s;
    QTest::newRow("a property") << u"tell application \"X\" to get colour"_s
                                << u"Error: Can’t get colour of application \"X\"."_s;
    QTest::newRow("an element outside tell") << u"return window 1"_s << u"Error: Can’t get window 1."_s;
    QTest::newRow("setting") << u"tell application \"X\" to set sound volume to 1"_s
                             << u"Error: Can’t set sound volume of application \"X\"."_s;
}

void ScriptTargetsTest::whatIsUnknownIsAnError()
{
    QFETCH(QString, source);
    SampleHost host;
    QTEST(run(source, host), "expected");
}

QTEST_GUILESS_MAIN(ScriptTargetsTest)
#include "ScriptTargetsTest.moc"
