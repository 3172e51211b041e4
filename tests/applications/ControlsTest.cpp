// SPDX-License-Identifier: Apache-2.0
// Controls of a GTK and a Qt application, judged by their windows and saved document. Controls of every
// toolkit are tested in matrix/.
#include "applications/support/DesktopTest.h"

#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

bool bringForward(quint32 window)
{
    Screen::requestFocus(window);
    const auto isActive = [window] {
        const auto active = Screen::activeWindow();
        return active && active->identifier == window;
    };
    return QTest::qWaitFor(isActive, PrivateDesktop::patience);
}

// Makes the window another application of the same process.
bool separate(quint32 window)
{
    const QStringList arguments{
        u"-id"_s,      QString::number(window), u"-remove"_s, u"_GTK_APPLICATION_ID"_s,
        u"-f"_s,       u"WM_CLASS"_s,           u"8s"_s,      u"-set"_s,
        u"WM_CLASS"_s, u"suite-calc"_s};
    return QProcess::execute(u"xprop"_s, arguments) == 0;
}

} // namespace

class ControlsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void pressesALabelInAnyLetterCase();
    void answersADialog();
    void aDialogOfAMenuIsReadAndAnswered();
    void ofTwoEqualWindowsTheOneInFrontIsMeant();
    void anApplicationOfASuiteHasOnlyItsOwnControls();
    void closeInADialogInFrontIsTheDialogs();
    void saysThatThereIsNoSuchControl();

private:
    QString m_path;
    QString m_windowClass;
    QString m_openLabel;
};

void ControlsTest::initTestCase_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("windowClass");
    QTest::addColumn<QString>("openLabel");
    QTest::newRow("GTK") << u"mousepad"_s << u"Mousepad"_s << u"Open..."_s;
    QTest::newRow("Qt") << u"featherpad"_s << u"FeatherPad"_s << u"Open"_s;
}

// Opens an editor with a modified document.
void ControlsTest::init()
{
    QFETCH_GLOBAL(QString, program);
    QFETCH_GLOBAL(QString, windowClass);
    QFETCH_GLOBAL(QString, openLabel);
    m_windowClass = windowClass;
    m_openLabel = openLabel;
    m_path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    PrivateDesktop::write(m_path, "");
    QVERIFY(PrivateDesktop::open(program, {m_path}, windowClass));
    QVERIFY(QTest::qWaitFor([] { return Screen::showsTitle(u"letter.txt"_s); }, PrivateDesktop::patience));
    const Outcome outcome = perform("type_text", {{"text", u"Dear reader"_s}});
    VERIFY_EFFECT(Screen::windowsOf(windowClass).value(0).title.startsWith(u'*'), outcome); // modified
}

void ControlsTest::pressesALabelInAnyLetterCase()
{
    const Outcome outcome = perform("click", {{"label", u"SAVE"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).startsWith("Dear reader"), outcome);
    QCOMPARE(outcome.line, u"Clicked “SAVE”."_s);
}

// Quitting opens a save prompt; its Cancel button keeps the application open.
void ControlsTest::answersADialog()
{
    const Outcome asked = perform("quit_app", {{"app", m_windowClass}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 2, asked);
    const Outcome outcome = perform("click", {{"label", u"Cancel"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 1, outcome);
    QVERIFY(Screen::showsTitle(u"letter.txt"_s));
    QCOMPARE(PrivateDesktop::read(m_path), QByteArray());
}

// While the dialog is open, its application responds to calls and keys.
void ControlsTest::aDialogOfAMenuIsReadAndAnswered()
{
    const Outcome asked = perform("click", {{"label", m_openLabel}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 2, asked);
    const Outcome key = perform("press_key", {{"key", u"tab"_s}});
    QCOMPARE(key.line, u"Pressed tab."_s);
    const Outcome controls = perform("read_ui");
    QVERIFY2(controls.line.contains(u"Button: Cancel"_s), qPrintable(controls.line));
    const Outcome outcome = perform("click", {{"label", u"Cancel"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 1, outcome);
}

// Both windows have the same controls, in any order.
void ControlsTest::ofTwoEqualWindowsTheOneInFrontIsMeant()
{
    if (m_windowClass != u"Mousepad"_s)
        QSKIP("Here each window is an application of its own.");
    const quint32 letter = Screen::windowsOf(m_windowClass).value(0).identifier;
    const Outcome opened = perform("click", {{"label", u"New Window"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 2, opened);
    const quint32 second = Screen::windowsOf(m_windowClass).value(1).identifier;
    QVERIFY(bringForward(second)); // as the desktop does with a new window, a moment after it is there
    QVERIFY(bringForward(letter));
    const Outcome saved = perform("click", {{"label", u"Save"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).startsWith("Dear reader"), saved);
    QVERIFY(bringForward(second));
    const Outcome closed = perform("click", {{"label", u"Close"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 1, closed);
    QCOMPARE(Screen::windowsOf(m_windowClass).value(0).identifier, letter);
}

// As in an office suite: one process, several applications, each with its own dialogs.
void ControlsTest::anApplicationOfASuiteHasOnlyItsOwnControls()
{
    if (m_windowClass != u"Mousepad"_s)
        QSKIP("Here each window is a process of its own.");
    if (Screen::session() != Screen::Session::X11)
        QSKIP("Only on X11 can another program make a window look like another application's.");
    const quint32 letter = Screen::windowsOf(m_windowClass).value(0).identifier;
    const Outcome opened = perform("click", {{"label", u"New Window"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 2, opened);
    QVERIFY(separate(Screen::windowsOf(m_windowClass).value(1).identifier));
    const Outcome about = perform("click", {{"label", u"About"_s}});
    VERIFY_EFFECT(Screen::showsTitle(u"About Mousepad"_s), about);
    const Outcome controls = perform("read_ui");
    QVERIFY2(controls.line.contains(u"Credits"_s), qPrintable(controls.line));

    QVERIFY(bringForward(letter));
    const Outcome othersControl = perform("click", {{"label", u"Credits"_s}});
    QCOMPARE(othersControl.line, u"Couldn't find a control labelled “Credits”."_s);
    const Outcome ownControls = perform("read_ui");
    QVERIFY2(!ownControls.line.contains(u"Credits"_s), qPrintable(ownControls.line));
    const Outcome saved = perform("click", {{"label", u"Save"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).startsWith("Dear reader"), saved);
}

void ControlsTest::closeInADialogInFrontIsTheDialogs()
{
    if (m_windowClass == u"Mousepad"_s)
        QSKIP("The button that closes its preferences has no name.");
    const Outcome opened = perform("click", {{"label", u"Preferences"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 2, opened);
    const Outcome closed = perform("click", {{"label", u"Close"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 1, closed);
    QVERIFY(Screen::windowsOf(m_windowClass).constFirst().title.startsWith(u"*"_s));
}

void ControlsTest::saysThatThereIsNoSuchControl()
{
    const Outcome outcome = perform("click", {{"label", u"Launch the rocket"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"Couldn't find a control labelled “Launch the rocket”."_s);
}

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
