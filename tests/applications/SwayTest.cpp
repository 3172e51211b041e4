// SPDX-License-Identifier: Apache-2.0
// Every kind of action in a Wayland session with sway, judged by sway and by the disk.
#include "applications/support/DesktopTest.h"
#include "applications/support/Doctor.h"
#include "applications/support/OrvaneProgram.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

const QString editorTask = u"Open TextEdit and type quarterly numbers look fine"_s;

qsizetype coloursAcross(const QImage &picture)
{
    QSet<QRgb> colours;
    for (int x = 0; x < picture.width(); x += 4)
        colours << picture.pixel(x, picture.height() / 2);
    return colours.size();
}

} // namespace

class SwayTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void anApplicationIsOpened();
    void textArrivesAndIsSaved();
    void keysGoToTheApplicationThatIsFocused();
    void controlsAreReadAndPressed();
    void windowsAreListed();
    void anApplicationIsQuit();
    void theScreenIsCaptured();
    void withoutAWindowNothingIsTyped();
    void aLockerGetsNoKeys();
    void whatChromiumWouldCutIsNotTyped();
    void theDoctorNamesTheWays();
    void aTaskIsCarriedOut();

private:
    // Opens the document in an editor; false on timeout.
    bool openEditor(const QString &program, const QString &path);
};

bool SwayTest::openEditor(const QString &program, const QString &path)
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

void SwayTest::anApplicationIsOpened()
{
    const Outcome outcome = perform("open_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Mousepad is now frontmost."_s);
    const auto focused = Screen::activeWindow();
    QVERIFY2(focused && focused->applicationIdentifier.contains("mousepad"_L1, Qt::CaseInsensitive),
             qPrintable(Screen::described()));
}

void SwayTest::textArrivesAndIsSaved()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    const QString text = u"Größe, naïve café, Ωμέγα, 漢字 and 👍🏽"_s;
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Screen::described()));
    const Outcome typed = perform("type_text", {{"text", text}});
    QVERIFY2(!typed.hasFailed, qPrintable(typed.line));
    const Outcome saved = perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(path).trimmed() == text.toUtf8(), saved);
}

void SwayTest::keysGoToTheApplicationThatIsFocused()
{
    const QString letter = PrivateDesktop::home(u"Documents/letter.txt"_s);
    const QString note = PrivateDesktop::home(u"Documents/note.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, letter), qPrintable(Screen::described()));
    QVERIFY2(openEditor(u"featherpad"_s, note), qPrintable(Screen::described()));
    const Outcome focused = perform("focus_app", {{"app", u"Mousepad"_s}});
    QVERIFY2(!focused.hasFailed, qPrintable(focused.line));
    perform("type_text", {{"text", u"for the letter"_s}});
    const Outcome saved = perform("press_key", {{"key", u"s"_s}, {"modifiers", u"command"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(letter).trimmed() == "for the letter", saved);
    QCOMPARE(PrivateDesktop::read(note), QByteArray());
}

void SwayTest::controlsAreReadAndPressed()
{
    const QString path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    QVERIFY2(openEditor(u"mousepad"_s, path), qPrintable(Screen::described()));
    const Outcome controls = perform("read_ui");
    QVERIFY2(controls.line.contains(u"MenuItem: Word Wrap"_s) || controls.line.contains(u"MenuItem: "_s),
             qPrintable(controls.line));
    perform("type_text", {{"text", u"Dear reader"_s}});
    const Outcome outcome = perform("click", {{"label", u"Save"_s}});
    QCOMPARE(outcome.line, u"Clicked “Save”."_s);
    VERIFY_EFFECT(PrivateDesktop::read(path).startsWith("Dear reader"), outcome);
}

void SwayTest::windowsAreListed()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    QVERIFY(openEditor(u"featherpad"_s, PrivateDesktop::home(u"Documents/note.txt"_s)));
    const Outcome outcome = perform("list_windows");
    const qsizetype letter = outcome.line.indexOf("letter.txt"_L1);
    const qsizetype note = outcome.line.indexOf("note.txt"_L1);
    QVERIFY2(note >= 0 && letter > note, qPrintable(outcome.line)); // the one used last comes first
    QVERIFY2(outcome.line.contains("Mousepad"_L1), qPrintable(outcome.line));
}

void SwayTest::anApplicationIsQuit()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    const Outcome outcome = perform("quit_app", {{"app", u"Mousepad"_s}});
    QCOMPARE(outcome.line, u"Mousepad quit."_s);
    QVERIFY2(Screen::windows().isEmpty(), qPrintable(Screen::described()));
}

void SwayTest::theScreenIsCaptured()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    QDir pictures(PrivateDesktop::home(u"Pictures"_s));
    // A window has the focus before its first picture is shown.
    const auto isWindowCaptured = [this, &pictures] {
        perform("screenshot", {{"save_to", u"Pictures"_s}});
        const QStringList files = pictures.entryList({u"*.png"_s});
        if (files.size() != 1)
            return false;
        const QImage picture(pictures.filePath(files.constFirst()));
        pictures.remove(files.constFirst());
        return picture.size() == QSize(1280, 800) && coloursAcross(picture) > 1;
    };
    QVERIFY(QTest::qWaitFor(isWindowCaptured, PrivateDesktop::patience));
}

void SwayTest::withoutAWindowNothingIsTyped()
{
    const Outcome outcome = perform("type_text", {{"text", u"secret"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"No application is in front to receive the keys."_s);
}

// The locker has no window, so no application is in front.
void SwayTest::aLockerGetsNoKeys()
{
    QVERIFY(openEditor(u"mousepad"_s, PrivateDesktop::home(u"Documents/letter.txt"_s)));
    QProcess locker;
    locker.start(u"swaylock"_s, {u"--color"_s, u"112233"_s});
    QVERIFY2(QTest::qWaitFor([] { return !Screen::activeWindow(); }, PrivateDesktop::patience),
             qPrintable(Screen::described()));
    const Outcome typed = perform("type_text", {{"text", u"secret"_s}});
    const Outcome key = perform("press_key", {{"key", u"tab"_s}});
    const Outcome clicked = perform("click", {{"label", u"Save"_s}});
    locker.kill();
    locker.waitForFinished();
    QCOMPARE(typed.line, u"No application is in front to receive the keys."_s);
    QCOMPARE(key.line, u"No application is in front to receive the keys."_s);
    QCOMPARE(clicked.line, u"No frontmost app."_s);
}

void SwayTest::whatChromiumWouldCutIsNotTyped()
{
    PrivateDesktop::start(u"chromium"_s, {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s,
                                          u"--ozone-platform=wayland"_s, u"about:blank"_s});
    const auto isInFront = [] {
        const auto window = Screen::activeWindow();
        return window && window->applicationIdentifier.contains("chromium"_L1);
    };
    QVERIFY2(QTest::qWaitFor(isInFront, PrivateDesktop::patience), qPrintable(Screen::described()));
    const Outcome outcome = perform("type_text", {{"text", u"party 🎉"_s}});
    QVERIFY2(outcome.hasFailed &&
                 outcome.line.endsWith(u"may not take the character “🎉”, so nothing was typed."_s),
             qPrintable(outcome.line));
}

void SwayTest::theDoctorNamesTheWays()
{
    const Doctor::Report report = Doctor::consult();
    for (const QString &check :
         {u"session"_s, u"windows"_s, u"keyboard"_s, u"screenshot"_s, u"accessibility"_s})
        QVERIFY2(report.state(check) == "works"_L1, qPrintable(report.text));
    QCOMPARE(report.state(u"hot-key"_s), u"limited"_s);
    QVERIFY(report.advice(u"hot-key"_s).contains("orvane --toggle"_L1));
}

void SwayTest::aTaskIsCarriedOut()
{
    OrvaneProgram::installPracticeModel();
    const QString output = OrvaneProgram::carryOut(editorTask);
    QVERIFY2(output.contains("quarterly numbers look fine"_L1), qPrintable(output));
    const auto editor = Screen::activeWindow();
    QVERIFY2(editor && editor->title.startsWith(u'*'), qPrintable(output + Screen::described())); // modified
}

QTEST_MAIN(SwayTest)
#include "SwayTest.moc"
