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
    QTest::newRow("step") << Kind::step << u"checkmark"_s << LogEntryAppearance::Secondary;
    QTest::newRow("success") << Kind::success << u"checkmark.circle.fill"_s << LogEntryAppearance::Good;
    QTest::newRow("failure") << Kind::failure << u"xmark.circle.fill"_s << LogEntryAppearance::Bad;
    QTest::newRow("info") << Kind::info << u"info.circle"_s << LogEntryAppearance::Secondary;
    QTest::newRow("confirm") << Kind::confirm << u"hand.raised.fill"_s << LogEntryAppearance::Warning;
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
    QTest::newRow("step") << Kind::step << Primary << Secondary;
    QTest::newRow("success") << Kind::success << Primary << Primary;
    QTest::newRow("failure") << Kind::failure << Bad << Bad;
    QTest::newRow("info") << Kind::info << Primary << Secondary;
    QTest::newRow("confirm") << Kind::confirm << Primary << Secondary;
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
    for (const Kind kind : {Kind::step, Kind::success, Kind::failure, Kind::info, Kind::confirm}) {
        said.append(LogEntryAppearance::spoken({.kind = kind}));
        QCOMPARE(LogEntryAppearance::spoken({.kind = kind, .running = true}), u"running"_s);
    }
    QVERIFY(!said.contains(QString()));
    QCOMPARE(said.removeDuplicates(), 0);
}

void LogEntryAppearanceTest::onlyAClosingMessageHasLinesOfItsOwn()
{
    for (const Kind kind : {Kind::step, Kind::failure, Kind::info, Kind::confirm})
        QCOMPARE(LogEntryAppearance::shownText({.text = u"a\nb\u200B"_s, .kind = kind}),
                 u"a⟨U+000A⟩b⟨U+200B⟩"_s);
    QCOMPARE(LogEntryAppearance::shownText({.text = u"a\nb\u200B"_s, .kind = Kind::success}),
             u"a\nb⟨U+200B⟩"_s);
}

QTEST_GUILESS_MAIN(LogEntryAppearanceTest)
#include "LogEntryAppearanceTest.moc"
