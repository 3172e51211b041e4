// SPDX-License-Identifier: Apache-2.0
#include "ContentView/ViewModels/LogEntryAppearance.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Kind = LogEntry::Kind;

class LogEntryAppearanceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachKindHasItsSymbol_data();
    void eachKindHasItsSymbol();
    void textIsColouredByKindAndWhetherItRuns_data();
    void textIsColouredByKindAndWhetherItRuns();
    void everyLineSaysHowItStands();
    void onlyAClosingMessageHasLinesOfItsOwn();
};

void LogEntryAppearanceTest::eachKindHasItsSymbol_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("symbol");
    QTest::addColumn<LogEntryAppearance::Role>("role");
    QTest::newRow("step") << Kind::Step << u"checkmark"_s << LogEntryAppearance::Secondary;
    QTest::newRow("success") << Kind::Success << u"checkmark.circle.fill"_s << LogEntryAppearance::Good;
    QTest::newRow("failure") << Kind::Failure << u"xmark.circle.fill"_s << LogEntryAppearance::Bad;
    QTest::newRow("info") << Kind::Info << u"info.circle"_s << LogEntryAppearance::Secondary;
    QTest::newRow("confirm") << Kind::Confirm << u"hand.raised.fill"_s << LogEntryAppearance::Warning;
}

void LogEntryAppearanceTest::eachKindHasItsSymbol()
{
    QFETCH(Kind, kind);
    QTEST(LogEntryAppearance::symbol(kind), "symbol");
    QTEST(LogEntryAppearance::symbolRole(kind), "role");
}

void LogEntryAppearanceTest::textIsColouredByKindAndWhetherItRuns_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<LogEntryAppearance::Role>("running");
    QTest::addColumn<LogEntryAppearance::Role>("complete");
    using namespace LogEntryAppearance;
    QTest::newRow("step") << Kind::Step << Primary << Secondary;
    QTest::newRow("success") << Kind::Success << Primary << Primary;
    QTest::newRow("failure") << Kind::Failure << Bad << Bad;
    QTest::newRow("info") << Kind::Info << Primary << Secondary;
    QTest::newRow("confirm") << Kind::Confirm << Primary << Secondary;
}

void LogEntryAppearanceTest::textIsColouredByKindAndWhetherItRuns()
{
    QFETCH(Kind, kind);
    QTEST(LogEntryAppearance::textRole({.kind = kind, .running = true}), "running");
    QTEST(LogEntryAppearance::textRole({.kind = kind, .running = false}), "complete");
}

void LogEntryAppearanceTest::everyLineSaysHowItStands()
{
    QStringList said;
    for (const Kind kind : {Kind::Step, Kind::Success, Kind::Failure, Kind::Info, Kind::Confirm}) {
        said.append(LogEntryAppearance::spoken({.kind = kind}));
        QCOMPARE(LogEntryAppearance::spoken({.kind = kind, .running = true}), u"running"_s);
    }
    QVERIFY(!said.contains(QString()));
    QCOMPARE(said.removeDuplicates(), 0);
}

void LogEntryAppearanceTest::onlyAClosingMessageHasLinesOfItsOwn()
{
    for (const Kind kind : {Kind::Step, Kind::Failure, Kind::Info, Kind::Confirm})
        QCOMPARE(LogEntryAppearance::shownText({.text = u"a\nb\u200B"_s, .kind = kind}),
                 u"a⟨U+000A⟩b⟨U+200B⟩"_s);
    QCOMPARE(LogEntryAppearance::shownText({.text = u"a\nb\u200B"_s, .kind = Kind::Success}),
             u"a\nb⟨U+200B⟩"_s);
}

QTEST_GUILESS_MAIN(LogEntryAppearanceTest)
#include "LogEntryAppearanceTest.moc"
