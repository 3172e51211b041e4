// SPDX-License-Identifier: Apache-2.0
// In a Wayland session, whatever needs windows, keys or the screen fails with one sentence, and Xwayland
// receives no requests that would reach its windows.
#include "applications/support/ActionRunner.h"
#include "applications/support/Doctor.h"
#include "applications/support/OrvaneProgram.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"
#include "applications/support/WaylandSession.h"

#include <QDir>
#include <QFileInfo>
#include <QObject>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QString sentence = u"Orvane can't see or operate this Wayland desktop yet: log out, and choose an X11 "
                         "(“Xorg”) session on the login screen."_s;

// An active window that records all its events (xev). Keys sent by xdotool prove that it receives events, and
// mark that all earlier ones have arrived.
class Witness
{
public:
    Witness() = default;
    ~Witness()
    {
        m_program.kill();
        m_program.waitForFinished();
    }
    Witness(const Witness &) = delete;
    Witness &operator=(const Witness &) = delete;

    // Starts it and waits until it has the input focus, shortly after it becomes active. False on timeout.
    bool start()
    {
        m_program.start(u"xev"_s);
        QByteArray told;
        const auto hasKeys = [&] {
            told += m_program.readAllStandardOutput();
            return told.contains("FocusIn event") && Screen::activeWindow().has_value();
        };
        return QTest::qWaitFor(hasKeys, PrivateDesktop::patience);
    }

    // Presses the key, and returns all events since the last call and before the key; nothing if the key
    // doesn't arrive.
    std::optional<QByteArray> eventsBefore(const QString &key)
    {
        Screen::pressKey(key);
        QByteArray told;
        const auto isThere = [&] {
            told += m_program.readAllStandardOutput();
            const qsizetype release = told.lastIndexOf("KeyRelease event");
            return release >= 0 && told.indexOf(keyName(key), release) >= 0 && told.endsWith(endOfEvent);
        };
        if (!QTest::qWaitFor(isThere, PrivateDesktop::patience))
            return std::nullopt;
        return told.first(told.indexOf("KeyPress event")).trimmed();
    }

private:
    static constexpr auto endOfEvent = "XFilterEvent returns: False\n";

    static QByteArray keyName(const QString &key) { return ", " + key.toUtf8() + "), same_screen"; }

    QProcess m_program;
};

} // namespace

class WaylandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void whatNeedsTheDesktopIsRefused_data();
    void whatNeedsTheDesktopIsRefused();
    void filesAreWorkedOn();
    void aTaskIsRefusedBeforeItIsPlanned();
    void theDoctorSaysIt();
    void withoutAnyServerItIsSaidToo_data();
    void withoutAnyServerItIsSaidToo();

private:
    std::optional<WaylandSession> m_session;
};

void WaylandTest::initTestCase()
{
    if (!PrivateDesktop::isHere())
        QFAIL("This test ends every window that it finds: start it with scripts/private-desktop.");
    m_session.emplace();
    QVERIFY(m_session->isRunning());
}

void WaylandTest::cleanup()
{
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
}

void WaylandTest::whatNeedsTheDesktopIsRefused_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char *action :
         {"open_app", "focus_app", "quit_app", "open_url", "web_search", "new_tab", "type_text", "press_key",
          "click", "screenshot", "open_path", "list_windows", "read_ui", "applescript"})
        QTest::newRow(action) << QByteArray(action);
}

void WaylandTest::whatNeedsTheDesktopIsRefused()
{
    QFETCH(QByteArray, action);
    ActionRunner runner;
    Witness witness;
    QVERIFY(witness.start());
    QVERIFY(witness.eventsBefore(u"a"_s));
    const Outcome outcome =
        runner.perform(action.constData(), {{"app", u"FeatherPad"_s},
                                            {"url", u"http://127.0.0.1:9/"_s},
                                            {"query", u"weather"_s},
                                            {"text", u"secret"_s},
                                            {"key", u"s"_s},
                                            {"modifiers", u"command"_s},
                                            {"label", u"Save"_s},
                                            {"save_to", u"Pictures"_s},
                                            {"path", PrivateDesktop::home(u"Documents"_s)},
                                            {"script", u"beep"_s}});
    QVERIFY2(outcome.hasFailed, qPrintable(outcome.line));
    QCOMPARE(outcome.line, sentence);
    const std::optional<QByteArray> events = witness.eventsBefore(u"b"_s);
    QVERIFY(events);
    QCOMPARE(*events, QByteArray());
    QCOMPARE(Screen::windows().size(), 1);
    QVERIFY(QDir(PrivateDesktop::home(u"Pictures"_s)).isEmpty());
}

void WaylandTest::filesAreWorkedOn()
{
    ActionRunner runner;
    const QString folder = PrivateDesktop::home(u"Documents/Projects"_s);
    const Outcome created =
        runner.perform("create_folder", {{"name", u"Projects"_s}, {"in", u"Documents"_s}});
    QCOMPARE(created.line, u"Created folder at %1."_s.arg(folder));
    QVERIFY(QFileInfo(folder).isDir());

    PrivateDesktop::write(folder + u"/a.txt"_s, "a");
    const Outcome found = runner.perform("find_files", {{"folder", u"Documents/Projects"_s}});
    QCOMPARE(found.line, u"Found 1 file(s), newest first: a.txt. Revealed “a.txt” in Finder."_s);

    const Outcome trashed = runner.perform("trash", {{"path", u"Documents/Projects/a.txt"_s}});
    QCOMPARE(trashed.line, u"Moved a.txt to the Trash."_s);
    QVERIFY(!QFileInfo::exists(folder + u"/a.txt"_s));
}

// Nor does it ask to download the missing model, which would be in vain.
void WaylandTest::aTaskIsRefusedBeforeItIsPlanned()
{
    const OrvaneProgram::Ending ending = OrvaneProgram::run({u"do"_s, u"Open Mousepad"_s});
    QCOMPARE(ending.output, u"orvane: "_s + sentence + u'\n');
    QCOMPARE(ending.status, 1);
}

void WaylandTest::theDoctorSaysIt()
{
    const Doctor::Report report = Doctor::consult();
    QVERIFY2(report.status == 4, qPrintable(report.text));
    QCOMPARE(report.identifiers(), QStringList({u"session"_s, u"model"_s, u"llama"_s}));
    QCOMPARE(report.state(u"session"_s), u"broken"_s);
    QCOMPARE(report.finding(u"session"_s), u"Orvane can't see or operate this Wayland desktop yet."_s);
    QVERIFY2(report.advice(u"session"_s).contains(u"X11"_s), qPrintable(report.text));
}

void WaylandTest::withoutAnyServerItIsSaidToo_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("a task") << QStringList{u"do"_s, u"Open Mousepad"_s};
    QTest::newRow("the window") << QStringList();
}

// Without a compositor either, so that the window can't be shown.
void WaylandTest::withoutAnyServerItIsSaidToo()
{
    QFETCH(QStringList, arguments);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"DISPLAY"_s);
    environment.insert(u"WAYLAND_DISPLAY"_s, u"wayland-nowhere"_s);
    const OrvaneProgram::Ending ending = OrvaneProgram::run(arguments, environment);
    QCOMPARE(ending.output, u"orvane: "_s + sentence + u'\n');
    QCOMPARE(ending.status, 1);
}

QTEST_GUILESS_MAIN(WaylandTest)
#include "WaylandTest.moc"
