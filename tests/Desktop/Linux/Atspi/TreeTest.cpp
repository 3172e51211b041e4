// SPDX-License-Identifier: Apache-2.0
// Finding and reading the trees of GTK 3, Qt and GTK 4 applications.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Awaited.h"

#include <QTemporaryFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The title of the visible window of this class, from the X server.
QString titleOf(const QString &windowClass)
{
    QProcess search;
    search.start(u"xdotool"_s,
                 {u"search"_s, u"--onlyvisible"_s, u"--class"_s, windowClass, u"getwindowname"_s});
    search.waitForFinished();
    return QString::fromUtf8(search.readAllStandardOutput()).trimmed();
}

} // namespace

class AtspiTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void labelsMatchTheScreen_data();
    void labelsMatchTheScreen();
    void theTextOfATextFieldIsItsValue();
    void aWindowOfAChildProcessBelongsToItsParent();
    void anElementThatNoLongerExistsIsEmpty();
    void aProcessWithoutATreeIsNamedInTheError();
    void anApplicationOfUnknownProcessIsFoundByItsWindow();
    void aBrowserThatHidesItsControlsIsReported();

private:
    AtspiBench m_bench;
};

void AtspiTreeTest::labelsMatchTheScreen_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("label");
    QTest::newRow("GTK 3 menu bar") << u"mousepad"_s << u"AXMenuBarItem"_s << u"Search"_s;
    QTest::newRow("GTK 3 closed menu") << u"mousepad"_s << u"AXMenuItem"_s << u"Find and Replace..."_s;
    QTest::newRow("GTK 3 button") << u"mousepad"_s << u"AXButton"_s << u"Undo"_s;
    QTest::newRow("Qt menu bar") << u"featherpad"_s << u"AXMenuItem"_s << u"Options"_s;
    QTest::newRow("Qt closed menu") << u"featherpad"_s << u"AXMenuItem"_s << u"Line Numbers"_s;
    QTest::newRow("Qt button") << u"featherpad"_s << u"AXButton"_s << u"Side-Pane"_s;
    QTest::newRow("Qt tab") << u"featherpad"_s << u"AXTab"_s << u"Untitled"_s;
    QTest::newRow("GTK 4 button") << u"gnome-calculator"_s << u"AXButton"_s << u"7"_s;
    QTest::newRow("GTK 4 description") << u"gnome-calculator"_s << u"AXButton"_s << u"Pi [Ctrl+P]"_s;
    QTest::newRow("GTK 4 text") << u"gnome-calculator"_s << u"AXStaticText"_s << u"√"_s;
}

void AtspiTreeTest::labelsMatchTheScreen()
{
    QFETCH(QString, program);
    QFETCH(QString, role);
    QFETCH(QString, label);
    const auto process = m_bench.start(program);
    QVERIFY2(m_bench.waitForLabel(*process, role, label),
             qPrintable(m_bench.labels(*process, role).join(u" | ")));
}

void AtspiTreeTest::theTextOfATextFieldIsItsValue()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write("Dear reader,\nthis is a letter.\n");
    file.close();
    for (const QString &program : {u"mousepad"_s, u"featherpad"_s}) {
        const auto process = m_bench.start(program, {file.fileName()});
        QVERIFY2(m_bench.waitForLabel(*process, u"AXTextField"_s, u"Dear reader, this is a letter."_s),
                 qPrintable(m_bench.labels(*process, u"AXTextField"_s).join(u" | ")));
    }
}

void AtspiTreeTest::aWindowOfAChildProcessBelongsToItsParent()
{
    const auto shell = m_bench.start(u"sh"_s, {u"-c"_s, u"featherpad; true"_s});
    QVERIFY(m_bench.waitForLabel(*shell, u"AXTab"_s, u"Untitled"_s));
    QVERIFY(m_bench.press(*shell, u"AXMenuItem"_s, u"Quit"_s));
    QVERIFY(shell->waitForFinished(AtspiBench::patience));
}

void AtspiTreeTest::anElementThatNoLongerExistsIsEmpty()
{
    const auto process = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*process, u"AXTab"_s, u"Untitled"_s));
    const auto tabs = [&] { return m_bench.labels(*process, u"AXTab"_s).size(); };
    QVERIFY(m_bench.press(*process, u"AXMenuItem"_s, u"New"_s));
    QTRY_COMPARE_WITH_TIMEOUT(tabs(), 2, AtspiBench::patience);

    const AtspiBench::Tree tree = m_bench.tree(*process);
    const AtspiBench::Walk walk = Awaited::result(AtspiBench::walk(tree));
    AccessibilityElement last = tree->root();
    for (qsizetype i = 0; i < walk.elements.size(); ++i) {
        if (walk.attributes.at(i).role == "AXTab"_L1)
            last = walk.elements.at(i);
    }
    QVERIFY(m_bench.press(*process, u"AXMenuItem"_s, u"Close"_s));
    QTRY_COMPARE_WITH_TIMEOUT(tabs(), 1, AtspiBench::patience);

    const AccessibilityAttributes gone = Awaited::result(tree->read({last})).constFirst();
    QCOMPARE(gone.role, QString());
    QVERIFY(!gone.title && !gone.description && !gone.value && !gone.help);
    QVERIFY(gone.children.isEmpty());
    QVERIFY(!Awaited::result(tree->press(last)));
}

void AtspiTreeTest::aProcessWithoutATreeIsNamedInTheError()
{
    const auto process = m_bench.start(u"sleep"_s, {u"1000"_s});
    QCOMPARE(AtspiBench::errorOf(m_bench.accessibility.applicationTree({process->processId()})),
             u"“sleep” doesn't show its controls. Quit it, then let Orvane open it."_s);
}

void AtspiTreeTest::anApplicationOfUnknownProcessIsFoundByItsWindow()
{
    const auto editor = m_bench.start(u"mousepad"_s);
    const auto other = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*editor, u"AXMenuItem"_s, u"Word Wrap"_s));
    QVERIFY(m_bench.waitForLabel(*other, u"AXTab"_s, u"Untitled"_s));
    const RunningApplication unknown{-7, u"Editor"_s};
    m_bench.windowTitles.inFront = {titleOf(u"mousepad"_s)};
    const AtspiBench::Tree tree = Awaited::result(m_bench.accessibility.applicationTree(unknown));
    const AtspiBench::Walk found = Awaited::result(AtspiBench::walk(tree));
    const auto isWordWrap = [](const AccessibilityAttributes &each) {
        return AtspiBench::label(each) == "Word Wrap"_L1;
    };
    QVERIFY(std::any_of(found.attributes.cbegin(), found.attributes.cend(), isWordWrap));

    m_bench.windowTitles.inFront = {u"A title that no window has"_s};
    QCOMPARE(AtspiBench::errorOf(m_bench.accessibility.applicationTree(unknown)),
             u"“Editor” doesn't show its controls. Quit it, then let Orvane open it."_s);
    m_bench.windowTitles.inFront.clear();
}

void AtspiTreeTest::aBrowserThatHidesItsControlsIsReported()
{
    const auto process = m_bench.start(
        u"chromium"_s, {u"--no-sandbox"_s, u"--no-first-run"_s, u"--disable-gpu"_s, u"about:blank"_s});
    const auto error = [&] {
        return AtspiBench::errorOf(m_bench.accessibility.applicationTree({process->processId()}));
    };
    QTRY_COMPARE_WITH_TIMEOUT(error(),
                              u"“Chromium” doesn't show its controls. Start it with "
                              "--force-renderer-accessibility, or let Orvane open it."_s,
                              AtspiBench::patience);
}

QTEST_GUILESS_MAIN(AtspiTreeTest)
#include "TreeTest.moc"
