// SPDX-License-Identifier: Apache-2.0
// Scripts, media players and notifications on a real session bus.
#include "Desktop/Linux/Scripting/LinuxScripting.h"
#include "Desktop/Linux/Scripting/SamplePlayer.h"
#include "Desktop/Linux/Scripting/SampleScripts.h"
#include "Support/Awaited.h"

#include <QDBusConnection>
#include <QScopeGuard>
#include <QTest>

using namespace Qt::StringLiterals;

using SampleScripts::run;

class LinuxScriptingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void returnsTheResult_data();
    void returnsTheResult();
    void controlsAPlayer_data();
    void controlsAPlayer();
    void knowsThePlayer_data();
    void knowsThePlayer();
    void choosesThePlayer_data();
    void choosesThePlayer();
    void setsTheVolume();
    void needsAPlayer();
    void showsNotifications_data();
    void showsNotifications();
    void needsANotificationService();
    void readsTheClipboard_data();
    void readsTheClipboard();
    void aClipboardWithoutTextIsEmpty();
    void fillsTheClipboard_data();
    void fillsTheClipboard();
    void aRecordIsNoTextForTheClipboard();
    void aScriptEndsWithItsService();
    void canBeInterrupted_data();
    void canBeInterrupted();
};

void LinuxScriptingTest::returnsTheResult_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::newRow("an integer") << u"return 42"_s << u"42"_s;
    QTest::newRow("a text") << u"return \"a\" & \"b\""_s << u"ab"_s;
    QTest::newRow("an empty text") << u"return \"\""_s << QString();
    QTest::newRow("a real") << u"return 7 / 2"_s << u"3.5"_s;
    QTest::newRow("a boolean") << u"return 1 = 1"_s << u"true"_s;
    QTest::newRow("a date") << u"return date \"2026-11-23\""_s
                            << u"Monday, November 23, 2026 at 12:00:00 AM"_s;
    QTest::newRow("a constant") << u"return Monday"_s << u"Monday"_s;
    QTest::newRow("a missing value") << u"return missing value"_s << u"none"_s;
    QTest::newRow("a list") << u"return {1, 2}"_s << u"none"_s;
    QTest::newRow("a record") << u"return {a:1}"_s << u"none"_s;
    QTest::newRow("nothing") << u""_s << u"none"_s;
    QTest::newRow("lines") << u"return \"a\" & linefeed & \"b\""_s << u"a b"_s;
    QTest::newRow("a marker") << u"return \"<|im_end|>\""_s << u"< |im_end| >"_s;
    QTest::newRow("an error") << u"error \"a\" & return & \"b\""_s << u"Error: a b"_s;
    QTest::newRow("not understood") << u"tell"_s
                                    << u"Error: Line 1: the end of the line is not understood here."_s;
}

void LinuxScriptingTest::returnsTheResult()
{
    QFETCH(QString, source);
    QTEST(run(source), "expected");
}

void LinuxScriptingTest::controlsAPlayer_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("call");
    QTest::newRow("play") << u"play"_s << u"Play"_s;
    QTest::newRow("pause") << u"pause"_s << u"Pause"_s;
    QTest::newRow("playpause") << u"playpause"_s << u"PlayPause"_s;
    QTest::newRow("stop") << u"stop"_s << u"Stop"_s;
    QTest::newRow("next track") << u"next track"_s << u"Next"_s;
    QTest::newRow("previous track") << u"previous track"_s << u"Previous"_s;
    QTest::newRow("back track") << u"back track"_s << u"Previous"_s;
}

void LinuxScriptingTest::controlsAPlayer()
{
    QFETCH(QString, command);
    QFETCH(QString, call);
    SamplePlayer player(u"sample"_s, u"Sample Player"_s);
    QCOMPARE(run(u"tell application \"Sample Player\" to "_s + command), u"none"_s);
    QCOMPARE(player.calls, QStringList(call));
}

void LinuxScriptingTest::knowsThePlayer_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("expected");
    QTest::newRow("name") << u"name of current track"_s << u"A Song"_s;
    QTest::newRow("artist") << u"artist of current track"_s << u"Ann, Bob"_s;
    QTest::newRow("album") << u"album of current track"_s << u"An Album"_s;
    QTest::newRow("duration") << u"duration of current track"_s << u"180.5"_s;
    QTest::newRow("volume") << u"sound volume"_s << u"50"_s;
    QTest::newRow("state") << u"player state"_s << u"paused"_s;
    QTest::newRow("comparison of the state") << u"(player state is paused)"_s << u"true"_s;
    QTest::newRow("position") << u"player position"_s << u"2.5"_s;
    QTest::newRow("unknown") << u"comment of current track"_s
                             << u"Error: Can’t get comment of current track."_s;
}

void LinuxScriptingTest::knowsThePlayer()
{
    QFETCH(QString, words);
    SamplePlayer player(u"sample"_s, u"Sample Player"_s);
    player.metadata = {{u"xesam:title"_s, u"A\nSong"_s},
                       {u"xesam:artist"_s, QStringList{u"Ann"_s, u"Bob"_s}},
                       {u"xesam:album"_s, u"An Album"_s},
                       {u"mpris:length"_s, qlonglong(180'500'000)}};
    QTEST(run(u"tell application \"Sample Player\" to return "_s + words), "expected");
}

void LinuxScriptingTest::choosesThePlayer_data()
{
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("called"); // its service
    QTest::newRow("by its identity") << u"Second Player"_s << u"second"_s;
    QTest::newRow("by its service") << u"first"_s << u"first"_s;
    QTest::newRow("the one that plays") << u"Music"_s << u"second"_s;
    QTest::newRow("the one that plays, by the old name") << u"iTunes"_s << u"second"_s;
}

void LinuxScriptingTest::choosesThePlayer()
{
    QFETCH(QString, application);
    SamplePlayer first(u"first"_s, u"First Player"_s);
    SamplePlayer second(u"second"_s, u"Second Player"_s);
    second.status = u"Playing"_s;
    QCOMPARE(run(u"tell application \"%1\" to pause"_s.arg(application)), u"none"_s);
    QCOMPARE(first.calls.size() + second.calls.size(), 1);
    QTEST(first.calls.isEmpty() ? u"second"_s : u"first"_s, "called");
}

void LinuxScriptingTest::setsTheVolume()
{
    SamplePlayer player(u"sample"_s, u"Sample Player"_s);
    QCOMPARE(run(u"tell application \"Music\" to set sound volume to 30"_s), u"30"_s);
    QCOMPARE(player.volume, 0.3);
    run(u"tell application \"Music\" to set sound volume to 300"_s);
    QCOMPARE(player.volume, 1.0);
}

void LinuxScriptingTest::needsAPlayer()
{
    QCOMPARE(run(u"tell application \"Music\" to play"_s),
             u"Error: No media player called “Music” is running."_s);
}

void LinuxScriptingTest::showsNotifications_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("capabilities");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a text") << u"display notification \"Done\""_s << QStringList() << u"Orvane: Done"_s;
    QTest::newRow("with title") << u"display notification \"Done\" with title \"Backup\""_s << QStringList()
                                << u"Backup: Done"_s;
    QTest::newRow("with subtitle") << u"display notification \"Done\" with title \"A\" subtitle \"B\""_s
                                   << QStringList() << u"A: B\nDone"_s;
    QTest::newRow("in tell") << u"tell application \"Finder\" to display notification \"x\""_s
                             << QStringList() << u"Orvane: x"_s;
    QTest::newRow("no markup") << u"display notification \"1 < 2\""_s << QStringList() << u"Orvane: 1 < 2"_s;
    QTest::newRow("markup") << u"display notification \"<b>1\""_s << QStringList{u"body-markup"_s}
                            << u"Orvane: &lt;b&gt;1"_s;
}

void LinuxScriptingTest::showsNotifications()
{
    QFETCH(QString, source);
    SampleNotifications service;
    QFETCH(QStringList, capabilities);
    service.capabilities = capabilities;
    QCOMPARE(run(source), u"none"_s);
    QCOMPARE(service.shown.size(), 1);
    QTEST(service.shown.first(), "shown");
}

void LinuxScriptingTest::needsANotificationService()
{
    // A name with no object keeps the bus from starting a service that happens to be installed.
    QDBusConnection bus = QDBusConnection::sessionBus();
    QVERIFY(bus.registerService(u"org.freedesktop.Notifications"_s));
    const auto unregister =
        qScopeGuard([&bus] { bus.unregisterService(u"org.freedesktop.Notifications"_s); });
    QCOMPARE(run(u"display notification \"x\""_s), u"Error: The desktop shows no notifications."_s);
}

void LinuxScriptingTest::readsTheClipboard_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("result");
    QTest::newRow("its text") << u"return the clipboard"_s << u"1 < 2"_s;
    QTest::newRow("as a class") << u"return (the clipboard as text) & \"!\""_s << u"1 < 2!"_s;
    QTest::newRow("in tell") << u"tell application \"Finder\" to return the clipboard"_s << u"1 < 2"_s;
    QTest::newRow("in an expression") << u"return length of (the clipboard)"_s << u"5"_s;
}

void LinuxScriptingTest::readsTheClipboard()
{
    QFETCH(QString, source);
    SampleScripts::SampleClipboard clipboard;
    clipboard.text = u"1 < 2"_s;
    QTEST(SampleScripts::run(source, clipboard), "result");
}

void LinuxScriptingTest::aClipboardWithoutTextIsEmpty()
{
    QCOMPARE(run(u"return (the clipboard) is \"\""_s), u"true"_s);
}

void LinuxScriptingTest::fillsTheClipboard_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("text");
    QTest::newRow("a text") << u"set the clipboard to \"one\""_s << u"one"_s;
    QTest::newRow("a number") << u"set the clipboard to 6 * 7"_s << u"42"_s;
    QTest::newRow("lines") << u"set the clipboard to \"a\" & linefeed & \"b\""_s << u"a\nb"_s;
    QTest::newRow("its own text") << u"set the clipboard to (the clipboard) & \".\""_s << u"before."_s;
    QTest::newRow("in tell") << u"tell application \"Finder\" to set the clipboard to \"one\""_s << u"one"_s;
}

void LinuxScriptingTest::fillsTheClipboard()
{
    QFETCH(QString, source);
    SampleScripts::SampleClipboard clipboard;
    clipboard.text = u"before"_s;
    QCOMPARE(SampleScripts::run(source, clipboard), u"none"_s);
    QTEST(clipboard.text.value(), "text");
}

void LinuxScriptingTest::aRecordIsNoTextForTheClipboard()
{
    SampleScripts::SampleClipboard clipboard;
    clipboard.text = u"before"_s;
    const QString error = SampleScripts::run(u"set the clipboard to {a:1}"_s, clipboard);
    QCOMPARE(error, u"Error: Can’t make {a:1} into type text."_s);
    QCOMPARE(clipboard.text, u"before"_s);
}

void LinuxScriptingTest::aScriptEndsWithItsService()
{
    SampleScripts::NoApplications host;
    SampleScripts::SampleClipboard clipboard;
    auto scripting = std::make_unique<LinuxScripting>(clipboard);
    const auto running = std::make_shared<Awaited::Outcome<ScriptOutcome>>();
    const QCoro::Task<void> settling = Awaited::settle(scripting->run(u"delay 1000"_s, host), running);
    scripting.reset();
    QVERIFY(Awaited::waitFor(running));
    QCOMPARE(running->value->text.value(), u"The script was cancelled."_s);
}

void LinuxScriptingTest::canBeInterrupted_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("in a delay") << u"delay 1000"_s;
    QTest::newRow("in a loop") << u"repeat\nend repeat"_s;
    QTest::newRow("where errors are caught") << u"repeat\ntry\ndelay 1000\nend try\nend repeat"_s;
    QTest::newRow("between commands")
        << u"repeat\ntry\nget name of application \"Sample\"\nend try\nend repeat"_s;
}

void LinuxScriptingTest::canBeInterrupted()
{
    QFETCH(QString, source);
    SampleScripts::NoApplications host;
    SampleScripts::SampleClipboard clipboard;
    LinuxScripting scripting(clipboard);
    const auto running = std::make_shared<Awaited::Outcome<ScriptOutcome>>();
    const QCoro::Task<void> settling = Awaited::settle(scripting.run(source, host), running);
    QTest::qWait(20);
    scripting.interrupt();
    QVERIFY(Awaited::waitFor(running));
    QCOMPARE(running->value->ending, ScriptOutcome::Ending::Failed);
    QCOMPARE(running->value->text.value(), u"The script was cancelled."_s);
    const ScriptOutcome next = Awaited::result(scripting.run(u"return 1"_s, host));
    QCOMPARE(next.text.value(), u"1"_s);
}

QTEST_GUILESS_MAIN(LinuxScriptingTest)
#include "LinuxScriptingTest.moc"
