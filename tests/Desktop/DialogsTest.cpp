// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Dialogs.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

Dialog question()
{
    Dialog dialog;
    dialog.text = u"Go on?"_s;
    dialog.buttons = {u"No"_s, u"Yes"_s};
    dialog.answer = u"at first"_s;
    return dialog;
}

// An asked question.
struct Asked
{
    explicit Asked(Dialogs &dialogs, const Dialog &dialog = question())
        : settling(Awaited::settle(dialogs.ask(dialog), outcome))
    {
    }

    std::shared_ptr<Awaited::Outcome<std::optional<DialogAnswer>>> outcome =
        std::make_shared<Awaited::Outcome<std::optional<DialogAnswer>>>();
    QCoro::Task<void> settling;
};

} // namespace

class DialogsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void returnsTheAnswer();
    void returnsNothingIfWithdrawn();
    void aNewQuestionWithdrawsTheOldOne();
    void givesUp();
    void failsIfThereIsNobodyToAsk();
    void answersWithoutAQuestionAreIgnored();
};

void DialogsTest::returnsTheAnswer()
{
    Dialogs dialogs;
    QSignalSpy changes(&dialogs, &Dialogs::pendingChanged);
    const Asked asked(dialogs);
    QCOMPARE(changes.size(), 1);
    QCOMPARE(dialogs.pending()->text, u"Go on?"_s);
    dialogs.answer({1, u"typed"_s, {}});
    QVERIFY(Awaited::waitFor(asked.outcome));
    QCOMPARE(asked.outcome->value.value()->button, 1);
    QCOMPARE(asked.outcome->value.value()->text, u"typed"_s);
    QVERIFY(!dialogs.pending());
    QCOMPARE(changes.size(), 2);
}

void DialogsTest::returnsNothingIfWithdrawn()
{
    Dialogs dialogs;
    QSignalSpy changes(&dialogs, &Dialogs::pendingChanged);
    const Asked asked(dialogs);
    dialogs.withdraw();
    QVERIFY(Awaited::waitFor(asked.outcome));
    QVERIFY(!asked.outcome->value.value());
    QVERIFY(!dialogs.pending());
}

void DialogsTest::aNewQuestionWithdrawsTheOldOne()
{
    Dialogs dialogs;
    QSignalSpy changes(&dialogs, &Dialogs::pendingChanged);
    const Asked first(dialogs);
    const Asked second(dialogs);
    QVERIFY(Awaited::waitFor(first.outcome));
    QVERIFY(!first.outcome->value.value());
    dialogs.answer({0, {}, {}});
    QVERIFY(Awaited::waitFor(second.outcome));
    QCOMPARE(second.outcome->value.value()->button, 0);
}

void DialogsTest::givesUp()
{
    Dialogs dialogs;
    QSignalSpy changes(&dialogs, &Dialogs::pendingChanged);
    Dialog dialog = question();
    dialog.givesUpAfter = 1ms;
    const Asked asked(dialogs, dialog);
    QVERIFY(Awaited::waitFor(asked.outcome));
    QCOMPARE(asked.outcome->value.value()->button, Dialog::noButton);
    QCOMPARE(asked.outcome->value.value()->text, u"at first"_s);
    QVERIFY(!dialogs.pending());
}

void DialogsTest::failsIfThereIsNobodyToAsk()
{
    Dialogs dialogs;
    QVERIFY_THROWS_EXCEPTION(PlatformError, Awaited::result(dialogs.ask(question())));
    QVERIFY(!dialogs.pending());
}

void DialogsTest::answersWithoutAQuestionAreIgnored()
{
    Dialogs dialogs;
    QSignalSpy changes(&dialogs, &Dialogs::pendingChanged);
    dialogs.answer({0, {}, {}});
    dialogs.withdraw();
    QCOMPARE(changes.size(), 0);
}

QTEST_GUILESS_MAIN(DialogsTest)
#include "DialogsTest.moc"
