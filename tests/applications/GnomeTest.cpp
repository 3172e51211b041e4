// SPDX-License-Identifier: Apache-2.0
// Every kind of action in a Wayland session with GNOME and our extension of its shell, judged by the shell
// and by the disk. The test answers the desktop's questions as a user would.
#include "applications/support/ActionRunner.h"
#include "applications/support/Doctor.h"
#include "applications/support/GnomeQuestions.h"
#include "applications/support/GnomeScreen.h"
#include "applications/support/LocalSite.h"
#include "applications/support/OrvaneProgram.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QColor>
#include <QDir>
#include <QImage>
#include <QObject>
#include <QProcess>
#include <QRasterWindow>
#include <QSet>
#include <QTest>
#include <QTimer>

#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;
using GnomeQuestions::Decision;
using GnomeScreen::Layout;

namespace {

const QString editorTask = u"Open TextEdit and type quarterly numbers look fine"_s;

// The kernel's key codes.
constexpr int tabKey = 15;
constexpr int returnKey = 28;
constexpr int shiftKey = 42;

constexpr std::array layouts{std::pair{"US", Layout::US}, std::pair{"German", Layout::German},
                             std::pair{"French", Layout::French}, std::pair{"Russian", Layout::Russian}};

// Editors don't agree on the blanks around words that are cut.
QByteArray lettersIn(const QString &path)
{
    return PrivateDesktop::read(path).simplified().replace(' ', "");
}

qsizetype coloursAcross(const QImage &picture)
{
    QSet<QRgb> colours;
    for (int x = 0; x < picture.width(); x += 4)
        colours << picture.pixel(x, picture.height() / 2);
    return colours.size();
}

} // namespace

// Waits for the effect; on timeout, fails the test with the action's result line and the windows.
#define VERIFY_ON_GNOME(effect, outcome)                                                                     \
    QVERIFY2(QTest::qWaitFor([&] { return (effect); }, PrivateDesktop::patience),                            \
             qPrintable((outcome).line + u" But on the screen: "_s + Screen::described()))

class GnomeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void anApplicationIsOpened();
    void textNeedsNoPermission();
    void keysNeedThePermissionOnce();
    void textArrivesAndIsSaved();
    void shortcutsWorkOnEveryLayout_data();
    void shortcutsWorkOnEveryLayout();
    void tabsAreChosenByDigitOnEveryLayout_data();
    void tabsAreChosenByDigitOnEveryLayout();
    void keysGoToTheApplicationThatIsFocused();
    void aHeldModifierKeepsKeysBack();
    void controlsAreReadAndPressed();
    void windowsAreListed();
    void anApplicationIsQuit();
    void withoutAWindowNothingIsTyped();
    void theOverviewGetsNoText();
    void picturesNeedThePermissionOnce();
    void scriptsMakeTheDesktopDark();
    void scriptsChangeTheDesktopsPicture();
    void otherProgramsAreNotAnswered();
    void theDoctorNamesTheWays();
    void aTaskIsCarriedOut();

private:
    QColor colourInTheMiddle();
    // Opens the document in an editor; false on timeout.
    bool openEditor(const QString &program, const QString &path);

    // Presses the key; fails the test if that fails.
    void press(const QString &key, const QString &modifiers = {});

    Outcome save(std::optional<Decision> decision = std::nullopt);

    std::optional<ActionRunner> m_runner;
    int m_questions = 0;
};

void GnomeTest::initTestCase()
{
    if (!PrivateDesktop::isHere() || qEnvironmentVariable("XDG_CURRENT_DESKTOP") != "GNOME"_L1)
        QFAIL("This test ends every window that it finds: start it with scripts/private-desktop --session "
              "gnome.");
    QGuiApplication::setDesktopFileName(u"org.orvane.Orvane"_s);
    m_runner.emplace();
}

void GnomeTest::cleanup()
{
    QVERIFY2(PrivateDesktop::clear(), qPrintable(Screen::described()));
    QVERIFY(GnomeScreen::useLayout(Layout::US));
}

bool GnomeTest::openEditor(const QString &program, const QString &path)
{
    PrivateDesktop::write(path, "");
    PrivateDesktop::start(program, {path});
    const QString name = QFileInfo(path).fileName();
    const auto isInFront = [&name] {
        const auto window = Screen::activeWindow();
        return window && window->title.contains(name);
    };
    return QTest::qWaitFor(isInFront, PrivateDesktop::patience);
}

void GnomeTest::anApplicationIsOpened()
{
    const Outcome outcome = m_runner->perform("open_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Mousepad is now frontmost."_s);
    const auto focused = Screen::activeWindow();
    QVERIFY2(focused && focused->className.contains("mousepad"_L1, Qt::CaseInsensitive),
             qPrintable(Screen::described()));
}

// Presses Ctrl+S. If the desktop asks for permission, it gets the decision; without one the question stays
// open.
Outcome GnomeTest::save(std::optional<Decision> decision)
{
    QTimer watching;
    connect(&watching, &QTimer::timeout, this, [&] {
        if (!GnomeQuestions::isAskedForKeys())
            return;
        watching.stop();
        ++m_questions;
        if (decision)
            GnomeQuestions::answerForKeys(*decision);
    });
    watching.start(200);
    return m_runner->perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
}

void GnomeTest::textNeedsNoPermission()
{
    QVERIFY2(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)),
             qPrintable(Screen::described()));
    const Outcome typed = m_runner->perform("type_text", {{"text", u"Dear reader"_s}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    VERIFY_ON_GNOME(Screen::showsTitle(u"*"_s), typed); // modified
}

void GnomeTest::keysNeedThePermissionOnce()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Screen::described()));
    m_runner->perform("type_text", {{"text", u"Dear reader"_s}});
    const Outcome refused = save(Decision::Refuse);
    QCOMPARE(refused.line,
             u"You didn't allow Orvane to press keys, so nothing was typed; it asks again next time."_s);
    QCOMPARE(PrivateDesktop::read(path), QByteArray());
    const Outcome saved = save(Decision::Allow);
    VERIFY_ON_GNOME(PrivateDesktop::read(path).trimmed() == "Dear reader", saved);
    QCOMPARE(m_questions, 2);
    m_runner->perform("type_text", {{"text", u" and writer"_s}});
    const Outcome savedAgain = save();
    VERIFY_ON_GNOME(PrivateDesktop::read(path).trimmed() == "Dear reader and writer", savedAgain);
    QCOMPARE(m_questions, 2);
}

void GnomeTest::textArrivesAndIsSaved()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    const QString text = u"Größe, naïve café,\n\tΩμέγα, 漢字 and 👍🏽"_s;
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Screen::described()));
    const Outcome typed = m_runner->perform("type_text", {{"text", text}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    const Outcome saved = save();
    VERIFY_ON_GNOME(PrivateDesktop::read(path).trimmed() == text.toUtf8(), saved);
}

void GnomeTest::press(const QString &key, const QString &modifiers)
{
    const Outcome outcome = m_runner->perform("press_key", {{"key", key}, {"modifiers", modifiers}});
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
}

void GnomeTest::shortcutsWorkOnEveryLayout_data()
{
    QTest::addColumn<Layout>("layout");
    QTest::addColumn<QString>("program");
    for (const QString &program : {u"mousepad"_s, u"gnome-text-editor"_s}) {
        for (const auto &[name, layout] : layouts)
            QTest::addRow("%s, %s", name, qPrintable(program)) << layout << program;
    }
}

// Selects words, letters and everything, copies, pastes, undoes and saves.
void GnomeTest::shortcutsWorkOnEveryLayout()
{
    QFETCH(const Layout, layout);
    QFETCH(const QString, program);
    const QString path = PrivateDesktop::home(u"Documents/keys.txt"_s);
    QVERIFY(GnomeScreen::useLayout(layout));
    QVERIFY2(openEditor(program, path), qPrintable(Screen::described()));
    m_runner->perform("type_text", {{"text", u"alpha beta gamma"_s}});
    press(u"left"_s, u"command+shift"_s);
    press(u"x"_s, u"command"_s);
    press(u"left"_s);
    press(u"left"_s, u"shift"_s);
    press(u"delete"_s);
    press(u"return"_s);
    press(u"v"_s, u"command"_s);
    const Outcome pasted = save();
    VERIFY_ON_GNOME(lettersIn(path) == "alphabetgamma", pasted);
    press(u"a"_s, u"command"_s);
    press(u"c"_s, u"control"_s);
    press(u"v"_s, u"ctrl"_s);
    press(u"v"_s, u"ctrl"_s);
    const Outcome doubled = save();
    VERIFY_ON_GNOME(lettersIn(path) == "alphabetgammaalphabetgamma", doubled);
    press(u"z"_s, u"command"_s);
    const Outcome undone = save();
    VERIFY_ON_GNOME(lettersIn(path) == "alphabetgamma", undone);
}

void GnomeTest::tabsAreChosenByDigitOnEveryLayout_data()
{
    QTest::addColumn<Layout>("layout");
    for (const auto &[name, layout] : layouts)
        QTest::addRow("%s", name) << layout;
}

void GnomeTest::tabsAreChosenByDigitOnEveryLayout()
{
    QFETCH(const Layout, layout);
    LocalSite site;
    site.setPage(u"/first"_s, u"First page"_s, {});
    site.setPage(u"/second"_s, u"Second page"_s, {});
    QVERIFY(GnomeScreen::useLayout(layout));
    PrivateDesktop::start(u"firefox-esr"_s, {site.address(u"/first"_s), site.address(u"/second"_s)});
    QVERIFY2(QTest::qWaitFor([] { return Screen::showsTitle(u"First page"_s); }, PrivateDesktop::patience),
             qPrintable(Screen::described()));
    for (const auto &[digit, title] : {std::pair{u"2"_s, u"Second page"_s}, {u"1"_s, u"First page"_s}}) {
        const Outcome outcome = m_runner->perform("press_key", {{"key", digit}, {"modifiers", u"option"_s}});
        VERIFY_ON_GNOME(Screen::showsTitle(title), outcome);
    }
}

void GnomeTest::keysGoToTheApplicationThatIsFocused()
{
    const QString letter = PrivateDesktop::home(u"Documents/letter.txt"_s);
    const QString note = PrivateDesktop::home(u"Documents/note.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, letter), qPrintable(Screen::described()));
    QVERIFY2(openEditor(u"gnome-text-editor"_s, note), qPrintable(Screen::described()));
    const Outcome focused = m_runner->perform("focus_app", {{"app", u"Mousepad"_s}});
    QVERIFY2(!focused.hasFailed, qPrintable(focused.line));
    m_runner->perform("type_text", {{"text", u"for the letter"_s}});
    const Outcome saved = save();
    VERIFY_ON_GNOME(PrivateDesktop::read(letter).trimmed() == "for the letter", saved);
    QCOMPARE(PrivateDesktop::read(note), QByteArray());
}

void GnomeTest::aHeldModifierKeepsKeysBack()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Screen::described()));
    GnomeScreen::hold(shiftKey);
    const Outcome outcome = save();
    GnomeScreen::release(shiftKey);
    QVERIFY2(outcome.line.startsWith("A modifier key"_L1) &&
                 outcome.line.endsWith("so no keys were sent."_L1),
             qPrintable(outcome.line));
}

void GnomeTest::controlsAreReadAndPressed()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Screen::described()));
    const Outcome controls = m_runner->perform("read_ui");
    QVERIFY2(controls.line.contains(u"MenuItem: Save As"_s), qPrintable(controls.line));
    m_runner->perform("type_text", {{"text", u"Dear reader"_s}});
    const Outcome outcome = m_runner->perform("click", {{"label", u"Save"_s}});
    QCOMPARE(outcome.line, u"Clicked “Save”."_s);
    VERIFY_ON_GNOME(PrivateDesktop::read(path).startsWith("Dear reader"), outcome);
}

void GnomeTest::windowsAreListed()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    QVERIFY(openEditor(u"gnome-text-editor"_s, PrivateDesktop::home(u"Documents/note.txt"_s)));
    const Outcome outcome = m_runner->perform("list_windows");
    const qsizetype letter = outcome.line.indexOf("letter.txt"_L1);
    const qsizetype note = outcome.line.indexOf("note.txt"_L1);
    QVERIFY2(note >= 0 && letter > note, qPrintable(outcome.line)); // front to back
    QVERIFY2(outcome.line.contains("Mousepad"_L1), qPrintable(outcome.line));
}

void GnomeTest::anApplicationIsQuit()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    const Outcome outcome = m_runner->perform("quit_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Mousepad quit."_s);
    QVERIFY2(Screen::windows().isEmpty(), qPrintable(Screen::described()));
}

void GnomeTest::withoutAWindowNothingIsTyped()
{
    const Outcome outcome = m_runner->perform("type_text", {{"text", u"secret"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"No application is in front to receive the keys."_s);
}

void GnomeTest::theOverviewGetsNoText()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    GnomeScreen::showOverview(true);
    const bool isCovered = QTest::qWaitFor([] { return !Screen::activeWindow(); }, PrivateDesktop::patience);
    const Outcome typed = m_runner->perform("type_text", {{"text", u"secret"_s}});
    GnomeScreen::showOverview(false);
    QVERIFY(isCovered);
    QCOMPARE(typed.line, u"No application is in front to receive the keys."_s);
}

void GnomeTest::picturesNeedThePermissionOnce()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    const Outcome refused = m_runner->perform("screenshot", {{"save_to", u"Pictures"_s}});
    QCOMPARE(
        refused.line,
        u"The desktop took no picture of the screen. It asks for permission only while Orvane's window is in front."_s);

    QRasterWindow window; // counts as Orvane's
    window.resize(400, 100);
    window.show();
    const auto isInFront = [] {
        const auto active = Screen::activeWindow();
        return active && active->applicationIdentifier == "org.orvane.Orvane"_L1;
    };
    QVERIFY(QTest::qWaitFor(isInFront, PrivateDesktop::patience));
    QTimer watching;
    connect(&watching, &QTimer::timeout, this, [&watching] {
        if (Screen::activeWindow())
            return;
        watching.stop();
        // The shell's question. "Deny" has the focus.
        GnomeScreen::press(tabKey);
        GnomeScreen::press(returnKey);
    });
    watching.start(200);
    const Outcome taken = m_runner->perform("screenshot", {{"save_to", u"Pictures"_s}});
    QVERIFY2(!taken.hasFailed, qPrintable(taken.line));
    window.close();

    const Outcome takenAgain = m_runner->perform("screenshot", {{"save_to", u"Documents"_s}});
    QVERIFY2(!takenAgain.hasFailed, qPrintable(takenAgain.line));
    const QDir documents(PrivateDesktop::home(u"Documents"_s));
    const QStringList files = documents.entryList({u"*.png"_s}, QDir::Files);
    QCOMPARE(files.size(), 1);
    const QImage picture(documents.filePath(files.constFirst()));
    QCOMPARE(picture.size(), QSize(1280, 800));
    QVERIFY(coloursAcross(picture) > 1);
    // The portal's own copy is gone.
    const QDir pictures(PrivateDesktop::home(u"Pictures"_s));
    QCOMPARE(pictures.entryList({u"*.png"_s}, QDir::Files).size(), 1);
}

QColor GnomeTest::colourInTheMiddle()
{
    const QString folder = PrivateDesktop::home(u"Screenshots"_s);
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    m_runner->perform("screenshot", {{"save_to", folder}});
    const QStringList files = QDir(folder).entryList({u"*.png"_s}, QDir::Files);
    const QImage picture(folder + u'/' + files.value(0));
    return picture.isNull() ? QColor() : picture.pixelColor(picture.rect().center());
}

void GnomeTest::scriptsMakeTheDesktopDark()
{
    const auto inPreferences = [this](const QString &statement) {
        const QString script =
            u"tell application \"System Events\" to tell appearance preferences to "_s + statement;
        return m_runner->perform("applescript", {{"script", script}}).line;
    };
    QCOMPARE(inPreferences(u"return dark mode"_s), u"Script returned: false"_s);
    QCOMPARE(inPreferences(u"set dark mode to not dark mode"_s), u"Script returned: true"_s);
    QCOMPARE(inPreferences(u"return dark mode"_s), u"Script returned: true"_s);
    QCOMPARE(inPreferences(u"set dark mode to false"_s), u"Script returned: false"_s);
    QCOMPARE(inPreferences(u"return dark mode"_s), u"Script returned: false"_s);
}

void GnomeTest::scriptsChangeTheDesktopsPicture()
{
    QImage green(64, 64, QImage::Format_RGB32);
    green.fill(Qt::green);
    const QString path = PrivateDesktop::home(u"Pictures/green meadow.png"_s);
    QVERIFY(green.save(path));
    const QString script = u"tell application \"Finder\" to set desktop picture to POSIX file \"%1\""_s;
    const Outcome set = m_runner->perform("applescript", {{"script", script.arg(path)}});
    QCOMPARE(set.line, u"Script returned: "_s + path);
    VERIFY_ON_GNOME(colourInTheMiddle() == QColor(Qt::green), set);
}

void GnomeTest::otherProgramsAreNotAnswered()
{
    QProcess other;
    other.start(u"gdbus"_s,
                {u"call"_s, u"--session"_s, u"--dest"_s, u"org.orvane.Shell"_s, u"--object-path"_s,
                 u"/org/orvane/Shell"_s, u"--method"_s, u"org.orvane.Shell.Windows"_s});
    QVERIFY(other.waitForFinished());
    const QByteArray message = other.readAllStandardError();
    QVERIFY2(other.exitCode() != 0 && message.contains("answers only Orvane"), message.constData());
}

void GnomeTest::theDoctorNamesTheWays()
{
    const Doctor::Report report = Doctor::consult();
    for (const QString &check :
         {u"session"_s, u"windows"_s, u"keyboard"_s, u"screenshot"_s, u"hot-key"_s, u"accessibility"_s})
        QVERIFY2(report.state(check) == "works"_L1, qPrintable(report.text));
}

void GnomeTest::aTaskIsCarriedOut()
{
    OrvaneProgram::installPracticeModel();
    const QString output = OrvaneProgram::carryOut(editorTask);
    QVERIFY2(output.contains("quarterly numbers look fine"_L1), qPrintable(output));
    const auto editor = Screen::activeWindow();
    QVERIFY2(editor && editor->title.startsWith(u'*'), qPrintable(output + Screen::described())); // modified
}

QTEST_MAIN(GnomeTest)
#include "GnomeTest.moc"
