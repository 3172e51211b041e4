// SPDX-License-Identifier: Apache-2.0
#include "SampleHost.h"
#include "Scripting/Language/ScriptParser.h"
#include "Scripting/ScriptError.h"
#include "Scripting/ScriptInterpreter.h"
#include "Support/Awaited.h"

#include <QCoroTimer>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

// No script can hang or exhaust the program.
class ScriptBoundsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void limitsValues_data();
    void limitsValues();
    void stopsWhatTakesTooLong_data();
    void stopsWhatTakesTooLong();
    void theUsersTimeDoesNotCount_data();
    void theUsersTimeDoesNotCount();
    void stopsWhenCancelled_data();
    void stopsWhenCancelled();
    void memoryIsLimitedInTotal_data();
    void memoryIsLimitedInTotal();
    void freedMemoryDoesNotCount();
    void doesNotBlockTheEventLoop();
    void limitsTheSource_data();
    void limitsTheSource();
    void destroysDeeplyNestedLists();
};

namespace {

QString outcome(const QString &source, std::stop_token cancellation = {},
                std::chrono::milliseconds limit = ScriptInterpreter::longestRun)
{
    SampleHost host;
    try {
        return ScriptCoercion::source(
            Awaited::result(ScriptInterpreter::run(source, host, cancellation, limit)));
    } catch (const ScriptError &error) {
        return u"Error: "_s + error.errorDescription();
    }
}

// Answers after longer than the script may take.
class LateHost : public ScriptHost
{
public:
    static constexpr auto limit = 50ms;

    QCoro::Task<std::optional<ScriptValue>> perform(ScriptCommand) override
    {
        co_await QCoro::sleepFor(2 * limit);
        std::optional<ScriptValue> answer = ScriptValue(true);
        co_return answer;
    }
};

const QString endless = u"repeat\nset x to 1\nend repeat"_s;

} // namespace

void ScriptBoundsTest::limitsValues_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a text") << u"set t to \"ab\"\nrepeat 30 times\nset t to t & t\nend repeat"_s
                            << u"Error: The text is too long."_s;
    QTest::newRow("a list") << u"set l to {1, 2}\nrepeat 30 times\nset l to l & l\nend repeat"_s
                            << u"Error: The list is too long."_s;
    QTest::newRow("the text of a list") << u"set t to \"ab\"\nrepeat 14 times\nset t to t & t\nend repeat\n"
                                           "set l to {t, t, t, t, t, t, t, t, t}\nreturn l as text"_s
                                        << u"Error: The text is too long."_s;
    QTest::newRow("lists in lists")
        << u"set l to {}\nrepeat 200 times\nset l to {l}\nend repeat\nreturn l = l"_s
        << u"Error: The value is nested too deeply."_s;
    QTest::newRow("a list shared many times")
        << u"set l to {1}\nrepeat 40 times\nset l to {l, l}\nend repeat\ncopy l to m"_s
        << u"Error: The value is too large for this operation."_s;
    QTest::newRow("too large can be caught")
        << u"set t to \"ab\"\ntry\nrepeat 30 times\nset t to t & t\nend repeat\n"
           "on error number n\nreturn n\nend try"_s
        << u"-2710"_s;
    QTest::newRow("delimiters") << u"set l to {}\nrepeat 40 times\nset end of l to \"x\"\nend repeat\n"
                                   "set text item delimiters to l"_s
                                << u"Error: There are too many text item delimiters."_s;
}

void ScriptBoundsTest::limitsValues()
{
    QFETCH(QString, source);
    QTEST(outcome(source), "expected");
}

void ScriptBoundsTest::stopsWhatTakesTooLong_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("a loop") << endless;
    QTest::newRow("a loop that catches errors") << u"repeat\ntry\nrepeat\nend repeat\nend try\nend repeat"_s;
    QTest::newRow("a delay") << u"delay 1000"_s;
}

void ScriptBoundsTest::stopsWhatTakesTooLong()
{
    QFETCH(QString, source);
    QCOMPARE(outcome(source, {}, 50ms), u"Error: The script takes too long."_s);
}

void ScriptBoundsTest::theUsersTimeDoesNotCount_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("counts");
    QTest::newRow("a dialog") << u"display dialog \"a\""_s << false;
    QTest::newRow("an alert") << u"display alert \"a\""_s << false;
    QTest::newRow("a choice") << u"choose from list {1}"_s << false;
    QTest::newRow("a notification") << u"display notification \"a\""_s << true;
}

void ScriptBoundsTest::theUsersTimeDoesNotCount()
{
    QFETCH(QString, source);
    QFETCH(bool, counts);
    LateHost host;
    const auto run = [&source, &host] {
        return Awaited::result(ScriptInterpreter::run(source, host, {}, LateHost::limit)).as<bool>();
    };
    if (counts)
        QVERIFY_THROWS_EXCEPTION(ScriptStopped, run());
    else
        QVERIFY(run());
}

void ScriptBoundsTest::stopsWhenCancelled_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("a loop") << endless;
    QTest::newRow("a delay") << u"delay 1000"_s;
}

void ScriptBoundsTest::stopsWhenCancelled()
{
    QFETCH(QString, source);
    std::stop_source stop;
    QTimer::singleShot(10ms, this, [&stop] { stop.request_stop(); });
    QCOMPARE(outcome(source, stop.get_token()), u"Error: The script was cancelled."_s);
}

void ScriptBoundsTest::memoryIsLimitedInTotal_data()
{
    QTest::addColumn<QString>("kept"); // a large value made from the text t
    QTest::newRow("texts") << u"t & (count l)"_s;
    QTest::newRow("parts of texts") << u"paragraphs of t"_s;
    QTest::newRow("lists") << u"characters 1 thru 10000 of t"_s;
    QTest::newRow("copies") << u"my duplicate({{{t}}})"_s;
}

void ScriptBoundsTest::memoryIsLimitedInTotal()
{
    QFETCH(QString, kept);
    QCOMPARE(outcome(u"on duplicate(x)\ncopy x to y\nreturn y\nend duplicate\n"
                     "set t to \"0123456789abcdef\"\nrepeat 12 times\nset t to t & t\nend repeat\n"
                     "set l to {}\nrepeat 1000 times\nset end of l to "_s +
                     kept + u"\nend repeat"_s),
             u"Error: The script needs too much memory."_s);
}

void ScriptBoundsTest::freedMemoryDoesNotCount()
{
    QCOMPARE(outcome(u"set t to \"0123456789abcdef\"\nrepeat 12 times\nset t to t & t\nend repeat\n"
                     "repeat with i from 1 to 200\nset u to t & i\nend repeat\nreturn length of u"_s),
             u"65539"_s);
}

// A timer of the event loop ends the script.
void ScriptBoundsTest::doesNotBlockTheEventLoop()
{
    int ticks = 0;
    std::stop_source stop;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (++ticks == 5)
            stop.request_stop();
    });
    timer.start(1ms);
    outcome(endless, stop.get_token());
    QCOMPARE(ticks, 5);
}

void ScriptBoundsTest::limitsTheSource_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::newRow("length") << QString(ScriptParser::longestSource + 1, u' ')
                            << u"Error: The script is too long."_s;
    QTest::newRow("brackets") << u"return "_s + QString(10'000, u'(')
                              << u"Error: Line 1: The script is nested too deeply."_s;
    QTest::newRow("braces") << u"return "_s + QString(10'000, u'{')
                            << u"Error: Line 1: The script is nested too deeply."_s;
    QTest::newRow("signs") << u"return "_s + u"- "_s.repeated(10'000) + u'1'
                           << u"Error: Line 1: The script is nested too deeply."_s;
    QTest::newRow("not") << u"return "_s + u"not "_s.repeated(10'000) + u"true"_s
                         << u"Error: Line 1: The script is nested too deeply."_s;
    QTest::newRow("of") << u"return "_s + u"length of "_s.repeated(5'000) + u"1"_s
                        << u"Error: Line 1: The script is nested too deeply."_s;
    QTest::newRow("powers") << u"return 1"_s + u"^1"_s.repeated(10'000)
                            << u"Error: Line 1: The script is nested too deeply."_s;
    QTest::newRow("blocks") << u"if true then\n"_s.repeated(1'000) << u"The script is nested too deeply."_s;
    QTest::newRow("operators") << u"return 1"_s + u"+1"_s.repeated(10'000)
                               << u"Error: Line 1: The statement has too many operators."_s;
    QTest::newRow("many operators") << u"return 1"_s + u"+1"_s.repeated(900) << u"901"_s;
    QTest::newRow("many statements") << u"set x to 1\n"_s.repeated(5'000) + u"return x"_s << u"1"_s;
}

void ScriptBoundsTest::limitsTheSource()
{
    QFETCH(QString, source);
    QFETCH(QString, expected);
    const QString actual = outcome(source);
    QVERIFY2(actual.endsWith(expected), qPrintable(actual));
}

void ScriptBoundsTest::destroysDeeplyNestedLists()
{
    QCOMPARE(outcome(u"set l to {}\nrepeat 60000 times\nset l to {l}\nend repeat\nset l to 0\nreturn 1"_s),
             u"1"_s);
}

QTEST_GUILESS_MAIN(ScriptBoundsTest)
#include "ScriptBoundsTest.moc"
