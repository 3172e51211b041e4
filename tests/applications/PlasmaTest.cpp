// SPDX-License-Identifier: Apache-2.0
// Every kind of action in a Wayland session with KWin, judged by KWin and by the disk.
#include "applications/support/ActionRunner.h"
#include "applications/support/Doctor.h"
#include "applications/support/HardText.h"
#include "applications/support/Kwin.h"
#include "applications/support/LocalSite.h"
#include "applications/support/OrvaneProgram.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/TextFields.h"

#include <QDir>
#include <QObject>
#include <QProcess>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 5;
const QString editorTask = u"Open TextEdit and type quarterly numbers look fine"_s;

} // namespace

// Waits for the effect; on timeout, fails the test with the action's result line and the windows.
#define VERIFY_ON_PLASMA(effect, outcome)                                                                    \
    QVERIFY2(QTest::qWaitFor([&] { return (effect); }, PrivateDesktop::patience),                            \
             qPrintable((outcome).line + u" But on the screen: "_s + Kwin::described()))

class PlasmaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void anApplicationIsOpened();
    void textArrivesAndIsSaved_data();
    void textArrivesAndIsSaved();
    void textArrivesInAPage_data();
    void textArrivesInAPage();
    void textArrivesInATerminal();
    void keysGoToTheApplicationThatIsFocused();
    void controlsAreReadAndPressed();
    void windowsAreListed();
    void anApplicationIsQuit();
    void aScreenshotIsRefused();
    void withoutAWindowNothingIsTyped();
    void theDoctorNamesTheWays();
    void aTaskIsCarriedOut();

private:
    // Opens the document in an editor; false on timeout.
    bool openEditor(const QString &program, const QString &path);
    // Replaces the text of the frontmost text field.
    Outcome type(const QString &text);

    std::optional<ActionRunner> m_runner;
};

void PlasmaTest::initTestCase()
{
    if (!PrivateDesktop::isHere() || qEnvironmentVariable("XDG_CURRENT_DESKTOP") != "KDE"_L1)
        QFAIL("This test ends every window that it finds: start it with scripts/private-desktop --session "
              "kde.");
    QVERIFY(Kwin::permitThisProgram());
    m_runner.emplace();
}

void PlasmaTest::cleanup()
{
    QVERIFY2(Kwin::clear(), qPrintable(Kwin::described()));
}

bool PlasmaTest::openEditor(const QString &program, const QString &path)
{
    PrivateDesktop::write(path, "");
    PrivateDesktop::start(program, {path});
    const QString name = QFileInfo(path).fileName();
    const auto isInFront = [&name] {
        const auto window = Kwin::focused();
        return window && window->title.contains(name);
    };
    return QTest::qWaitFor(isInFront, PrivateDesktop::patience);
}

Outcome PlasmaTest::type(const QString &text)
{
    const Outcome selected = m_runner->perform("press_key", {{"key", u"a"_s}, {"modifiers", u"command"_s}});
    return selected.hasFailed ? selected : m_runner->perform("type_text", {{"text", text}});
}

// Also over a window that has the focus: KWin gives none to what is started then.
void PlasmaTest::anApplicationIsOpened()
{
    QVERIFY(openEditor(u"featherpad"_s, PrivateDesktop::home(u"Documents/note.txt"_s)));
    const Outcome outcome = m_runner->perform("open_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Mousepad is now frontmost."_s);
    const auto focused = Kwin::focused();
    QVERIFY2(focused && focused->applicationIdentifier.contains("mousepad"_L1, Qt::CaseInsensitive),
             qPrintable(Kwin::described()));
}

void PlasmaTest::textArrivesAndIsSaved_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("GTK 3") << u"mousepad"_s;
    QTest::newRow("GTK 4") << u"gnome-text-editor"_s;
    QTest::newRow("Qt 5") << u"featherpad"_s;
}

void PlasmaTest::textArrivesAndIsSaved()
{
    QFETCH(const QString, program);
    const QString path = PrivateDesktop::home(u"Documents/%1.txt"_s.arg(program));
    QVERIFY2(openEditor(program, path), qPrintable(Kwin::described()));
    for (int round = 0; round < rounds; ++round) {
        const QString text = HardText::ofRound(round);
        const Outcome typed = type(text);
        QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
        const Outcome saved = m_runner->perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
        QVERIFY2(!saved.hasFailed, qPrintable(saved.line));
        const QString difference = TextFields::differenceInFile(path, text);
        QVERIFY2(difference.isEmpty(), qPrintable(u"round %1: %2"_s.arg(round).arg(difference)));
    }
}

void PlasmaTest::textArrivesInAPage_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("options");
    QTest::newRow("Firefox") << u"firefox-esr"_s << QStringList();
    QTest::newRow("Chromium") << u"chromium"_s
                              << QStringList{u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s,
                                             u"--ozone-platform=wayland"_s, u"--password-store=basic"_s};
}

void PlasmaTest::textArrivesInAPage()
{
    QFETCH(const QString, program);
    QFETCH(const QStringList, options);
    LocalSite site;
    TextFields::addPage(site);
    PrivateDesktop::start(program, options + QStringList{site.address(u"/notes"_s)});
    const auto isReady = [&site] { return site.report() == "ready"_L1 && Kwin::focused(); };
    QVERIFY2(QTest::qWaitFor(isReady, PrivateDesktop::patience), qPrintable(Kwin::described()));
    for (int round = 0; round < rounds; ++round) {
        const QString text = HardText::ofRound(round);
        const Outcome outcome = type(text);
        QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
        QVERIFY2(QTest::qWaitFor([&] { return site.report() == text; }, PrivateDesktop::patience),
                 qPrintable(u"round %1: %2"_s.arg(round).arg(HardText::difference(text, site.report()))));
    }
}

// Where Ctrl+V is no shortcut for pasting.
void PlasmaTest::textArrivesInATerminal()
{
    const QString path = PrivateDesktop::home(u"Documents/größe.txt"_s);
    const Outcome opened = m_runner->perform("open_app", {{"app", u"Terminal"_s}});
    QVERIFY2(!opened.hasFailed, qPrintable(opened.line));
    const Outcome typed = m_runner->perform("type_text", {{"text", u"echo 漢字 >Documents/größe.txt\n"_s}});
    VERIFY_ON_PLASMA(PrivateDesktop::read(path) == "漢字\n", typed);
}

void PlasmaTest::keysGoToTheApplicationThatIsFocused()
{
    const QString letter = PrivateDesktop::home(u"Documents/letter.txt"_s);
    const QString note = PrivateDesktop::home(u"Documents/note.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, letter), qPrintable(Kwin::described()));
    QVERIFY(m_runner->perform("open_app", {{"app", u"FeatherPad"_s}}).hasFailed == false);
    const Outcome focused = m_runner->perform("focus_app", {{"app", u"Mousepad"_s}});
    QVERIFY2(!focused.hasFailed, qPrintable(focused.line));
    m_runner->perform("type_text", {{"text", u"for the letter"_s}});
    const Outcome saved = m_runner->perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
    VERIFY_ON_PLASMA(PrivateDesktop::read(letter).trimmed() == "for the letter", saved);
}

void PlasmaTest::controlsAreReadAndPressed()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Kwin::described()));
    const Outcome controls = m_runner->perform("read_ui");
    QVERIFY2(controls.line.contains(u"MenuItem: "_s), qPrintable(controls.line));
    m_runner->perform("type_text", {{"text", u"Dear reader"_s}});
    const Outcome outcome = m_runner->perform("click", {{"label", u"Save"_s}});
    QCOMPARE(outcome.line, u"Clicked “Save”."_s);
    VERIFY_ON_PLASMA(PrivateDesktop::read(path).startsWith("Dear reader"), outcome);
}

void PlasmaTest::windowsAreListed()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    m_runner->perform("open_app", {{"app", u"FeatherPad"_s}});
    const Outcome outcome = m_runner->perform("list_windows");
    const qsizetype letter = outcome.line.indexOf("letter.txt"_L1);
    const qsizetype editor = outcome.line.indexOf("FeatherPad"_L1);
    QVERIFY2(editor >= 0 && letter > editor, qPrintable(outcome.line)); // front to back
    QVERIFY2(outcome.line.contains("Mousepad"_L1), qPrintable(outcome.line));
}

void PlasmaTest::anApplicationIsQuit()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    const qint64 process = Kwin::focused()->process;
    const Outcome outcome = m_runner->perform("quit_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Mousepad quit."_s);
    QVERIFY2(Kwin::windows().isEmpty(), qPrintable(Kwin::described()));
    QVERIFY(!PrivateDesktop::isRunning(process));
}

// This desktop has no portal.
void PlasmaTest::aScreenshotIsRefused()
{
    const Outcome outcome = m_runner->perform("screenshot", {{"save_to", u"Pictures"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"There is no desktop portal."_s);
    QVERIFY(QDir(PrivateDesktop::home(u"Pictures"_s)).isEmpty());
}

void PlasmaTest::withoutAWindowNothingIsTyped()
{
    const Outcome outcome = m_runner->perform("type_text", {{"text", u"secret"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"No application is in front to receive the keys."_s);
}

// The program is another than this one, and unknown at first. Connections are permitted once and for all, so
// its entry may replace this program's.
void PlasmaTest::theDoctorNamesTheWays()
{
    const Doctor::Report unknown = Doctor::consult();
    QCOMPARE(unknown.state(u"session"_s), u"broken"_s);
    QVERIFY2(unknown.advice(u"session"_s).contains("orvane integrate"_L1), qPrintable(unknown.text));
    Doctor::Report report;
    QCOMPARE(OrvaneProgram::run({u"integrate"_s}).status, 0);
    const auto isKnown = [&report] {
        report = Doctor::consult();
        return report.state(u"session"_s) == "works"_L1;
    };
    QVERIFY2(QTest::qWaitFor(isKnown, PrivateDesktop::patience), qPrintable(report.text));
    for (const QString &check : {u"windows"_s, u"keyboard"_s, u"accessibility"_s})
        QVERIFY2(report.state(check) == "works"_L1, qPrintable(report.text));
    QCOMPARE(report.state(u"screenshot"_s), u"absent"_s);
}

void PlasmaTest::aTaskIsCarriedOut()
{
    OrvaneProgram::installPracticeModel();
    QCOMPARE(OrvaneProgram::run({u"integrate"_s}).status, 0);
    const auto isKnown = [] { return Doctor::consult().state(u"session"_s) == "works"_L1; };
    QVERIFY(QTest::qWaitFor(isKnown, PrivateDesktop::patience));
    const QString output = OrvaneProgram::carryOut(editorTask);
    QVERIFY2(output.contains("quarterly numbers look fine"_L1), qPrintable(output));
    const auto editor = Kwin::focused();
    QVERIFY2(editor && editor->title.startsWith(u'*'), qPrintable(output + Kwin::described())); // modified
}

QTEST_MAIN(PlasmaTest)
#include "PlasmaTest.moc"
