// SPDX-License-Identifier: Apache-2.0
// Applications that hang or die while they are read: one clear sentence, and an event loop that goes on.
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
    void anApplicationThatHangsIsNamed_data();
    void anApplicationThatHangsIsNamed();
    void anApplicationThatHangsDuringTheWalkIsNamed_data();
    void anApplicationThatHangsDuringTheWalkIsNamed();
    void aPressOnAnApplicationThatHangsFailsInTime();
    void anApplicationKilledDuringTheWalkHasQuit();
    void aWalkThatNobodyWaitsForEndsQuietly();

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

void AtspiFaultTest::anApplicationThatHangsIsNamed_data()
{
    programs();
}

void AtspiFaultTest::anApplicationThatHangsIsNamed()
{
    QFETCH(QString, program);
    const auto process = m_bench.start(program);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
    QVERIFY(Freezing::freeze(process->processId()));
    const StandstillWatch watch;
    const QString error = AtspiBench::errorOf(m_bench.accessibility.applicationTree(process->processId()));
    QVERIFY2(error.endsWith(u"” isn't responding."_s), qPrintable(error));
    // The system cuts long names of processes.
    QVERIFY2(error.startsWith(u"“"_s + program.first(8)), qPrintable(error));
    QVERIFY2(watch.longest() <= StandstillWatch::limit, qPrintable(QString::number(watch.longest().count())));
    signalTo(*process, SIGCONT);
    QVERIFY(m_bench.waitForLabel(*process, u"AXButton"_s, u"Undo"_s));
}

void AtspiFaultTest::anApplicationThatHangsDuringTheWalkIsNamed_data()
{
    QTest::addColumn<QString>("program");
    // GTK 3 tells its tree in bulk, so that nothing is left to ask during a walk.
    QTest::newRow("Qt") << u"featherpad"_s;
}

void AtspiFaultTest::anApplicationThatHangsDuringTheWalkIsNamed()
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

void AtspiFaultTest::aPressOnAnApplicationThatHangsFailsInTime()
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
    // It cannot answer any more when it dies, so the walk is certainly under way.
    QVERIFY(Freezing::freeze(process->processId()));
    QCoro::Task<AtspiBench::Walk> walk = AtspiBench::walk(tree);
    signalTo(*process, SIGKILL);
    const QString error = AtspiBench::errorOf(std::move(walk));
    QVERIFY2(error.endsWith(u"” has quit."_s), qPrintable(error));
    const QString later = AtspiBench::errorOf(tree->press(tree->root()));
    QVERIFY2(later.endsWith(u"” has quit."_s), qPrintable(later));
    process->waitForFinished();
}

void AtspiFaultTest::aWalkThatNobodyWaitsForEndsQuietly()
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
