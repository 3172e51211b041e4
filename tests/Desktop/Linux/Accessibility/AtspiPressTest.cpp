// SPDX-License-Identifier: Apache-2.0
// Presses, judged by what they do.
#include "Desktop/Linux/Accessibility/AtspiBench.h"

#include <QTest>

using namespace Qt::StringLiterals;

class AtspiPressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCalculatorAddsWhatIsPressed();
    void aMenuItemOfAClosedMenuIsCarriedOut_data();
    void aMenuItemOfAClosedMenuIsCarriedOut();
    void aPressThatOpensADialogCountsAsDone();
    void theApplicationIsGivenTheFocusFirst();
    void whatCannotBePressedSaysNo();

private:
    AtspiBench m_bench;
};

void AtspiPressTest::theCalculatorAddsWhatIsPressed()
{
    const auto calculator = m_bench.start(u"gnome-calculator"_s);
    QVERIFY(m_bench.waitForLabel(*calculator, u"AXButton"_s, u"="_s));
    for (const QString &key : {u"7"_s, u"+"_s, u"8"_s, u"="_s})
        QVERIFY2(m_bench.press(*calculator, u"AXButton"_s, key), qPrintable(key));
    QVERIFY2(m_bench.waitForLabel(*calculator, u"AXTextField"_s, u"15"_s),
             qPrintable(m_bench.labels(*calculator, u"AXTextField"_s).join(u" | ")));
}

void AtspiPressTest::aMenuItemOfAClosedMenuIsCarriedOut_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("GTK 3") << u"mousepad"_s;
    QTest::newRow("Qt") << u"featherpad"_s;
}

void AtspiPressTest::aMenuItemOfAClosedMenuIsCarriedOut()
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
        const auto windows = [&] {
            const AtspiBench::Tree tree = m_bench.tree(*editor);
            return QCoro::waitFor(tree->read({tree->root()})).constFirst().children.size();
        };
        QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, AtspiBench::patience);
        QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"About"_s));
        QTRY_VERIFY_WITH_TIMEOUT(windows() > 1, AtspiBench::patience);
    }
}

void AtspiPressTest::theApplicationIsGivenTheFocusFirst()
{
    const auto editor = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"New"_s));
    m_bench.activations.clear();
    QVERIFY(m_bench.press(*editor, u"AXMenuItem"_s, u"New"_s));
    QCOMPARE(m_bench.activations, QList<qint64>{editor->processId()});
}

void AtspiPressTest::whatCannotBePressedSaysNo()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXButton"_s, u"Undo"_s));
    const AtspiBench::Tree tree = m_bench.tree(*editor);
    QVERIFY(!QCoro::waitFor(tree->press(tree->root())));
}

QTEST_GUILESS_MAIN(AtspiPressTest)
#include "AtspiPressTest.moc"
