// SPDX-License-Identifier: Apache-2.0
// Presses, judged by their effect.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// macOS virtual key codes.
constexpr std::uint16_t letterKey = 0x00; // A
constexpr std::uint16_t tabKey = 0x30;

} // namespace

class AtspiPressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCalculatorAddsWhatIsPressed();
    void thePressIsFoundByItsName_data();
    void thePressIsFoundByItsName();
    void aWrappedButtonIsPressed();
    void aMenuItemOfAClosedMenuIsActivated_data();
    void aMenuItemOfAClosedMenuIsActivated();
    void aPressThatOpensADialogCountsAsDone();
    void anApplicationRespondsDuringAMenuItemsDialog();
    void anApplicationRespondsDuringAButtonsDialog();
    void aButtonLeavesTheFocusWhereItWas();
    void aButtonThatQuitsItsApplicationCountsAsPressed();
    void aDisabledControlIsNotPressed();
    void theApplicationIsGivenTheFocusFirst();
    void anElementWithoutAPressActionIsNotPressed();

private:
    qsizetype windows(const QProcess &program);

    AtspiBench m_bench;
};

qsizetype AtspiPressTest::windows(const QProcess &program)
{
    const AtspiBench::Tree tree = m_bench.tree(program);
    return Awaited::result(tree->read({tree->root()})).constFirst().children.size();
}

void AtspiPressTest::theCalculatorAddsWhatIsPressed()
{
    const auto calculator = m_bench.start(u"gnome-calculator"_s);
    QVERIFY(m_bench.waitForLabel(*calculator, u"AXButton"_s, u"="_s));
    for (const QString &key : {u"7"_s, u"+"_s, u"8"_s, u"="_s})
        QVERIFY2(m_bench.press(*calculator, u"AXButton"_s, key), qPrintable(key));
    QVERIFY2(m_bench.waitForLabel(*calculator, u"AXTextField"_s, u"15"_s),
             qPrintable(m_bench.labels(*calculator, u"AXTextField"_s).join(u" | ")));
}

void AtspiPressTest::thePressIsFoundByItsName_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("effect");
    QTest::newRow("the last of three actions") << u"AXButton"_s << u"Save"_s << u"Press"_s;
    QTest::newRow("a menu that can only be shown") << u"AXMenuItem"_s << u"Tools"_s << u"Menu"_s;
}

void AtspiPressTest::thePressIsFoundByItsName()
{
    QFETCH(QString, role);
    QFETCH(QString, control);
    QFETCH(QString, effect);
    const auto sample = m_bench.start(QStringLiteral(WIDGET_SAMPLE));
    QVERIFY(m_bench.waitForLabel(*sample, u"AXStaticText"_s, u"Nothing yet"_s));
    QVERIFY(m_bench.press(*sample, role, control));
    QVERIFY2(m_bench.waitForLabel(*sample, u"AXStaticText"_s, effect),
             qPrintable(m_bench.labels(*sample, u"AXStaticText"_s).join(u" | ")));
}

// GTK 4's menu button has no press action, but the unnamed button inside it has.
void AtspiPressTest::aWrappedButtonIsPressed()
{
    const auto calculator = m_bench.start(u"gnome-calculator"_s);
    QVERIFY(m_bench.waitForLabel(*calculator, u"AXButton"_s, u"="_s));
    const auto elements = [&] {
        return Awaited::result(AtspiBench::walk(m_bench.tree(*calculator))).elements.size();
    };
    const qsizetype before = elements();
    QVERIFY(m_bench.press(*calculator, u"AXButton"_s, u"Mode selection"_s));
    QTRY_VERIFY_WITH_TIMEOUT(elements() > before, AtspiBench::patience);
}

void AtspiPressTest::aMenuItemOfAClosedMenuIsActivated_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("GTK 3") << u"mousepad"_s;
    QTest::newRow("Qt") << u"featherpad"_s;
}

void AtspiPressTest::aMenuItemOfAClosedMenuIsActivated()
{
    QFETCH(QString, program);
    const auto editor = m_bench.start(program);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"New"_s));
    QTRY_COMPARE_WITH_TIMEOUT(m_bench.labels(*editor, u"AXTab"_s).size(), 1, AtspiBench::patience);
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"New"_s));
    QTRY_COMPARE_WITH_TIMEOUT(m_bench.labels(*editor, u"AXTab"_s).size(), 2, AtspiBench::patience);
}

void AtspiPressTest::aPressThatOpensADialogCountsAsDone()
{
    for (const QString &program : {u"mousepad"_s, u"featherpad"_s}) {
        const auto editor = m_bench.start(program);
        QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"About"_s));
        QTRY_COMPARE_WITH_TIMEOUT(windows(*editor), 1, AtspiBench::patience);
        QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"About"_s));
        QTRY_VERIFY_WITH_TIMEOUT(windows(*editor) > 1, AtspiBench::patience);
    }
}

// GTK 3 would deadlock at the first key in a dialog opened by an action.
void AtspiPressTest::anApplicationRespondsDuringAMenuItemsDialog()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"Open..."_s));
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"Open..."_s));
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Cancel"_s));
    Awaited::result(m_bench.strikeKey({editor->processId()}, tabKey));
    QVERIFY(m_bench.press(*editor, u"AXButton"_s, u"Cancel"_s));
    QTRY_COMPARE_WITH_TIMEOUT(windows(*editor), 1, AtspiBench::patience);
}

void AtspiPressTest::anApplicationRespondsDuringAButtonsDialog()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"letter.txt"_s);
    QVERIFY(QFile(path).open(QIODevice::WriteOnly));
    const auto editor = m_bench.start(u"mousepad"_s, {path});
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"Save As..."_s));
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"Save As..."_s));
    QVERIFY(m_bench.waitForLabel(*editor, u"AXTextField"_s, u"letter.txt"_s));
    const auto pressesSave = [&] { return m_bench.press(*editor, u"AXButton"_s, u"Save"_s); };
    QVERIFY(QTest::qWaitFor(pressesSave, AtspiBench::patience));         // disabled until the folder is read
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Replace"_s)); // it prompts, since the file exists
    Awaited::result(m_bench.strikeKey({editor->processId()}, tabKey));
    QVERIFY(m_bench.press(*editor, u"AXButton"_s, u"Replace"_s));
    QTRY_COMPARE_WITH_TIMEOUT(windows(*editor), 1, AtspiBench::patience);
}

void AtspiPressTest::aButtonLeavesTheFocusWhereItWas()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"Toolbar"_s));
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"Toolbar"_s));
    Awaited::result(m_bench.strikeKey({editor->processId()}, letterKey));
    QVERIFY(m_bench.waitForLabel(*editor, u"AXTextField"_s, u"a"_s));
    QVERIFY(m_bench.press(*editor, u"AXButton"_s, u"Undo"_s));
    Awaited::result(m_bench.strikeKey({editor->processId()}, letterKey));
    Awaited::result(m_bench.strikeKey({editor->processId()}, letterKey));
    QVERIFY2(m_bench.waitForLabel(*editor, u"AXTextField"_s, u"aa"_s),
             qPrintable(m_bench.labels(*editor, u"AXTextField"_s).join(u" | ")));
}

void AtspiPressTest::aButtonThatQuitsItsApplicationCountsAsPressed()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"Quit"_s));
    Awaited::result(m_bench.strikeKey({editor->processId()}, letterKey));
    QVERIFY(m_bench.waitForLabel(*editor, u"AXTextField"_s, u"a"_s));
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"Quit"_s));
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Don't Save"_s));
    QVERIFY(m_bench.press(*editor, u"AXButton"_s, u"Don't Save"_s));
    QTRY_COMPARE_WITH_TIMEOUT(editor->state(), QProcess::NotRunning, AtspiBench::patience);
}

void AtspiPressTest::aDisabledControlIsNotPressed()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"Redo"_s));
    QVERIFY(!m_bench.press(*editor, u"AXMenuItem"_s, u"Redo"_s));
}

void AtspiPressTest::theApplicationIsGivenTheFocusFirst()
{
    const auto editor = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"New"_s));
    m_bench.activations.clear();
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"New"_s));
    QCOMPARE(m_bench.activations, QList<qint64>{editor->processId()});
}

void AtspiPressTest::anElementWithoutAPressActionIsNotPressed()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Undo"_s));
    const AtspiBench::Tree tree = m_bench.tree(*editor);
    QVERIFY(!Awaited::result(tree->press(tree->root())));
}

QTEST_GUILESS_MAIN(AtspiPressTest)
#include "PressTest.moc"
