// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/TurnListModel.h"

#include "Agent/SessionBench.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

LogListModel *logOf(const TurnListModel &turns, int row)
{
    return turns.data(turns.index(row), TurnListModel::LogRole).value<LogListModel *>();
}

QString textOf(const LogListModel &log, int row)
{
    return log.data(log.index(row), LogListModel::TextRole).toString();
}

} // namespace

class TurnListModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void turnsAppearOldestFirst();
    void linesAppearAndChangeInPlace();
    void aModelMadeLaterShowsExistingTurns();
    void aSummaryShowsWhereTheLastLineDoesNotSayIt_data();
    void aSummaryShowsWhereTheLastLineDoesNotSayIt();
    void clearingTheHistoryEmptiesTheList();
    void rolesHaveTheNamesThatTheViewsUse();
};

void TurnListModelTest::turnsAppearOldestFirst()
{
    SessionBench bench;
    TurnListModel turns(*bench.session);
    const QAbstractItemModelTester tester(&turns);
    bench.engine->replies = {done(u"First."_s), done(u"Second."_s)};
    bench.runTask(u"one"_s);
    bench.runTask(u"two"_s);
    QCOMPARE(turns.rowCount(), 2);
    QCOMPARE(turns.data(turns.index(0), TurnListModel::CommandRole).toString(), u"one"_s);
    QCOMPARE(turns.data(turns.index(1), TurnListModel::CommandRole).toString(), u"two"_s);
}

void TurnListModelTest::linesAppearAndChangeInPlace()
{
    SessionBench bench;
    const TurnListModel turns(*bench.session);
    bench.engine->replies = {typeText(u"hello"_s), done(u"Done."_s)};
    bench.session->submit(u"type hello"_s);
    LogListModel *log = logOf(turns, 0);
    const QAbstractItemModelTester tester(log);
    const QSignalSpy changes(log, &LogListModel::dataChanged);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(log->rowCount(), static_cast<int>(bench.lastTurn().log.size()));
    for (int row = 0; row < log->rowCount(); ++row) {
        QCOMPARE(textOf(*log, row), bench.lastTurn().log[row].text);
        QCOMPARE(log->data(log->index(row), LogListModel::RunningRole).toBool(), false);
    }
    QVERIFY(!changes.isEmpty());
}

void TurnListModelTest::aModelMadeLaterShowsExistingTurns()
{
    SessionBench bench;
    bench.engine->replies = {done(u"Done."_s)};
    bench.runTask(u"one"_s);
    const TurnListModel turns(*bench.session);
    QCOMPARE(turns.rowCount(), 1);
    QCOMPARE(textOf(*logOf(turns, 0), 0), u"Done."_s);
}

void TurnListModelTest::aSummaryShowsWhereTheLastLineDoesNotSayIt_data()
{
    QTest::addColumn<QStringList>("replies");
    QTest::addColumn<QString>("shown");
    QTest::newRow("done") << QStringList{done(u"Done."_s)} << QString();
    QTest::newRow("refused") << QStringList{quitApp(u"Mail"_s)} << u"I didn't do that, as requested."_s;
    QTest::newRow("failed") << QStringList{u"no"_s, u"no"_s, u"no"_s} << QString();
}

void TurnListModelTest::aSummaryShowsWhereTheLastLineDoesNotSayIt()
{
    QFETCH(QStringList, replies);
    QFETCH(QString, shown);
    SessionBench bench;
    TurnListModel turns(*bench.session);
    const QAbstractItemModelTester tester(&turns);
    for (const QString &reply : replies)
        bench.engine->replies.append(reply);
    connect(bench.session.get(), &AgentSession::pendingChanged, this, [&bench] {
        if (bench.session->pending())
            bench.session->resolve(false);
    });
    bench.session->submit(u"Quit Mail"_s);
    QCOMPARE(turns.data(turns.index(0), TurnListModel::SummaryRole).toString(), QString());
    const QSignalSpy changes(&turns, &TurnListModel::dataChanged);
    QVERIFY(bench.waitForEnd());
    QCOMPARE(turns.data(turns.index(0), TurnListModel::SummaryRole).toString(), shown);
    QCOMPARE(changes.size(), 1);
    const TurnListModel later(*bench.session);
    QCOMPARE(later.data(later.index(0), TurnListModel::SummaryRole).toString(), shown);
}

void TurnListModelTest::clearingTheHistoryEmptiesTheList()
{
    SessionBench bench;
    TurnListModel turns(*bench.session);
    const QAbstractItemModelTester tester(&turns);
    bench.engine->replies = {done(u"Done."_s), done(u"Again."_s)};
    bench.runTask(u"one"_s);
    bench.session->clearHistory();
    QCOMPARE(turns.rowCount(), 0);
    bench.runTask(u"two"_s);
    QCOMPARE(turns.rowCount(), 1);
    QCOMPARE(textOf(*logOf(turns, 0), 0), u"Again."_s);
}

void TurnListModelTest::rolesHaveTheNamesThatTheViewsUse()
{
    SessionBench bench;
    const TurnListModel turns(*bench.session);
    const LogListModel log({});
    const auto names = [](const QAbstractItemModel &model) {
        QByteArrayList list = model.roleNames().values();
        std::sort(list.begin(), list.end());
        return list.join(' ');
    };
    QCOMPARE(names(turns), "command log summary");
    QCOMPARE(names(log), "running spoken symbol symbolRole text textRole");
}

QTEST_GUILESS_MAIN(TurnListModelTest)
#include "TurnListModelTest.moc"
