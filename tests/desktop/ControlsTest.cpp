// SPDX-License-Identifier: Apache-2.0
// Keys and controls of a GTK and a Qt application, judged by the document that they save.
#include "desktop/support/DesktopTest.h"

using namespace Qt::StringLiterals;

class ControlsTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void savesWithAKey();
    void pressesAnItemOfAClosedMenu_data();
    void pressesAnItemOfAClosedMenu();
    void answersADialog();
    void saysThatThereIsNoSuchControl();
    void readsTheControls();

private:
    QString m_path;
    QString m_windowClass;
};

void ControlsTest::initTestCase_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("windowClass");
    QTest::newRow("GTK") << u"mousepad"_s << u"Mousepad"_s;
    QTest::newRow("Qt") << u"featherpad"_s << u"FeatherPad"_s;
}

// An editor with a document that has just been changed.
void ControlsTest::init()
{
    QFETCH_GLOBAL(QString, program);
    QFETCH_GLOBAL(QString, windowClass);
    m_windowClass = windowClass;
    m_path = PrivateDesktop::home(u"Documents/letter.txt"_s);
    PrivateDesktop::write(m_path, "");
    QVERIFY(PrivateDesktop::open(program, {m_path}, windowClass));
    QVERIFY(QTest::qWaitFor([] { return Screen::showsTitle(u"letter.txt"_s); }, PrivateDesktop::patience));
    const Outcome outcome = perform("type_text", {{"text", u"Dear reader"_s}});
    VERIFY_EFFECT(Screen::windowsOf(windowClass).value(0).title.startsWith(u'*'), outcome); // changed
}

void ControlsTest::savesWithAKey()
{
    const Outcome outcome = perform("press_key", {{"key", u"S"_s}, {"modifiers", u"command"_s}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).startsWith("Dear reader"), outcome);
    QCOMPARE(outcome.line, u"Pressed S."_s);
}

void ControlsTest::pressesAnItemOfAClosedMenu_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("whole label") << u"Save"_s;
    QTest::newRow("another letter case") << u"SAVE"_s;
    QTest::newRow("a part of the label") << u"Sav"_s;
}

void ControlsTest::pressesAnItemOfAClosedMenu()
{
    QFETCH(QString, label);
    const Outcome outcome = perform("click", {{"label", label}});
    VERIFY_EFFECT(PrivateDesktop::read(m_path).startsWith("Dear reader"), outcome);
    QCOMPARE(outcome.line, u"Clicked “%1”."_s.arg(label));
}

// Quitting asks what should become of the document; the dialog's own button keeps the application open.
void ControlsTest::answersADialog()
{
    const Outcome asked = perform("quit_app", {{"app", m_windowClass}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 2, asked);
    const Outcome outcome = perform("click", {{"label", u"Cancel"_s}});
    VERIFY_EFFECT(Screen::windowsOf(m_windowClass).size() == 1, outcome);
    QVERIFY(Screen::showsTitle(u"letter.txt"_s));
    QCOMPARE(PrivateDesktop::read(m_path), QByteArray());
}

void ControlsTest::saysThatThereIsNoSuchControl()
{
    const Outcome outcome = perform("click", {{"label", u"Launch the rocket"_s}});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, u"Couldn't find a control labelled “Launch the rocket”."_s);
}

void ControlsTest::readsTheControls()
{
    const Outcome outcome = perform("read_ui");
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
    const QStringList lines = outcome.line.split(u" | "_s);
    QVERIFY2(lines.size() >= 5 && lines.size() <= 40, qPrintable(outcome.line));
    QVERIFY2(outcome.line.contains("Save"_L1), qPrintable(outcome.line));
}

QTEST_MAIN(ControlsTest)
#include "ControlsTest.moc"
