// SPDX-License-Identifier: Apache-2.0
#include "Agent/PendingConfirmation.h"
#include "Agent/Turn.h"

#include <QTest>

using namespace Qt::StringLiterals;

class RunRecordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewTurnIsOpenAndEmpty()
    {
        const Turn turn{.command = u"Open Safari"_s};
        QVERIFY(!turn.id.isNull());
        QCOMPARE(turn.command, u"Open Safari"_s);
        QVERIFY(turn.log.isEmpty());
        QVERIFY(!turn.finished);
        QVERIFY(!turn.summary);
    }

    void twoTurnsOfTheSameTaskAreDistinct()
    {
        const Turn first{.command = u"Open Safari"_s};
        const Turn second{.command = u"Open Safari"_s};
        QVERIFY(first.id != second.id);
        QVERIFY(!(first == second));
    }

    void twoEntriesWithTheSameTextAreDistinctLines()
    {
        const LogEntry first{.text = u"Opening new tab"_s};
        const LogEntry second{.text = u"Opening new tab"_s};
        QVERIFY(first.id != second.id);
        QVERIFY(!(first == second));
    }

    void aCopyIsTheSameRecord()
    {
        const LogEntry entry{.text = u"Cancelled"_s, .kind = LogEntry::Kind::Info};
        const LogEntry copy = entry;
        QCOMPARE(copy.id, entry.id);
        QVERIFY(copy == entry);
    }

    void kindsStandInTheirOrder()
    {
        using Kind = LogEntry::Kind;
        const QList<Kind> kinds = {Kind::Step, Kind::Success, Kind::Failure, Kind::Info, Kind::Confirm};
        for (qsizetype i = 0; i < kinds.size(); ++i)
            QCOMPARE(static_cast<qsizetype>(kinds[i]), i);
    }

    void aConfirmationKnowsItsActionAndReason()
    {
        const std::optional<AgentAction> action = AgentAction::parse(uR"({"action":"trash","path":"a"})"_s);
        QVERIFY(action);
        const PendingConfirmation first{.action = *action, .reason = u"Move “a” to the Trash"_s};
        const PendingConfirmation second{.action = *action, .reason = u"Move “a” to the Trash"_s};
        QCOMPARE(first.action.id, action->id);
        QCOMPARE(first.reason, u"Move “a” to the Trash"_s);
        QVERIFY(first.id != second.id);
    }

    void theReasonIsShownOnOneLine()
    {
        QCOMPARE(shown(u"trash"_s, u"Move “a\n\u202Eb” away"_s), u"Move “a⟨U+000A⟩⟨U+202E⟩b” away"_s);
    }

    void aScriptIsShownOnItsLines()
    {
        QCOMPARE(shown(u"applescript"_s, u"Run:\ntell\n\tbeep\u202E\rend"_s),
                 u"Run:\ntell\n\tbeep⟨U+202E⟩⟨U+000D⟩end"_s);
    }

private:
    static QString shown(const QString &actionName, const QString &reason)
    {
        PendingConfirmation pending;
        pending.action.name = actionName;
        pending.reason = reason;
        return pending.shownReason();
    }
};

QTEST_GUILESS_MAIN(RunRecordsTest)
#include "RunRecordsTest.moc"
