// SPDX-License-Identifier: Apache-2.0
// Applications that hang or crash while being read cause a clear error and never block the event loop.
#include "Desktop/Linux/Atspi/Bench.h"
#include "Support/Freezing.h"
#include "Support/StandstillWatch.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

void signalTo(const QProcess &program, int signal)
{
    ::kill(static_cast<pid_t>(program.processId()), signal);
}

} // namespace

class AtspiFaultTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHungApplicationIsNamed_data();
    void aHungApplicationIsNamed();
    void anApplicationHungDuringTheWalkIsNamed_data();
    void anApplicationHungDuringTheWalkIsNamed();
    void aPressOnAHungApplicationTimesOut();
    void anApplicationKilledDuringTheWalkHasQuit();
    void anAbandonedWalkEndsQuietly();

private:
    static void programs();

    AtspiBench m_bench;
};

void AtspiFaultTest::programs()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("GTK 3") << u"mousepad"_s;
    QTest::newRow("Qt") << u"featherpad"_s;
    QTest::newRow("GTK 4") << u"gnome-calculator"_s;
}

void AtspiFaultTest::aHungApplicationIsNamed_data()
{
    programs();
}

void AtspiFaultTest::aHungApplicationIsNamed()
{
    QFETCH(QString, program);
    const auto process = m_bench.start(program);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
    QVERIFY(Freezing::freeze(process->processId()));
    const StandstillWatch watch;
    const QString error = AtspiBench::errorOf(m_bench.accessibility.applicationTree({process->processId()}));
    QVERIFY2(error.endsWith(u"” isn't responding."_s), qPrintable(error));
    // The kernel truncates long process names.
    QVERIFY2(error.startsWith(u"“"_s + program.first(8)), qPrintable(error));
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
    signalTo(*process, SIGCONT);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
}

void AtspiFaultTest::anApplicationHungDuringTheWalkIsNamed_data()
{
    QTest::addColumn<QString>("program");
    // Not GTK 3: its tree is cached, so a traversal makes no calls.
    QTest::newRow("Qt") << u"featherpad"_s;
}

void AtspiFaultTest::anApplicationHungDuringTheWalkIsNamed()
{
    QFETCH(QString, program);
    const auto process = m_bench.start(program);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
    const AtspiBench::Tree tree = m_bench.tree(*process);
    QVERIFY(Freezing::freeze(process->processId()));
    const StandstillWatch watch;
    const QString error = AtspiBench::errorOf(AtspiBench::walk(tree));
    QVERIFY2(error.endsWith(u"” isn't responding."_s), qPrintable(error));
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

void AtspiFaultTest::aPressOnAHungApplicationTimesOut()
{
    const auto process = m_bench.start(u"mousepad"_s);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
    const AtspiBench::Tree tree = m_bench.tree(*process);
    QVERIFY(Freezing::freeze(process->processId()));
    const StandstillWatch watch;
    const QString error = AtspiBench::errorOf(tree->press(tree->root()));
    QVERIFY2(error.endsWith(u"” isn't responding."_s), qPrintable(error));
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
}

void AtspiFaultTest::anApplicationKilledDuringTheWalkHasQuit()
{
    const auto process = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
    const AtspiBench::Tree tree = m_bench.tree(*process);
    // A frozen process cannot reply any more, so that the traversal is certainly in progress.
    QVERIFY(Freezing::freeze(process->processId()));
    QCoro::Task<AtspiBench::Walk> walk = AtspiBench::walk(tree);
    signalTo(*process, SIGKILL);
    const QString error = AtspiBench::errorOf(std::move(walk));
    QVERIFY2(error.endsWith(u"” has quit."_s), qPrintable(error));
    const QString later = AtspiBench::errorOf(tree->press(tree->root()));
    QVERIFY2(later.endsWith(u"” has quit."_s), qPrintable(later));
    process->waitForFinished();
}

void AtspiFaultTest::anAbandonedWalkEndsQuietly()
{
    const auto process = m_bench.start(u"featherpad"_s);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
    std::weak_ptr<AccessibilityTree> tree;
    {
        AtspiBench other;
        const AtspiBench::Tree strong = other.tree(*process);
        tree = strong;
        (void)strong->read({strong->root()});
    }
    QTRY_VERIFY_WITH_TIMEOUT(tree.expired(), AtspiBench::patience);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
}

QTEST_GUILESS_MAIN(AtspiFaultTest)
#include "FaultTest.moc"
