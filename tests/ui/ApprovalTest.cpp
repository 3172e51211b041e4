// SPDX-License-Identifier: Apache-2.0
// Steps that need approval, answered in every way, and judged by the effect on files and applications.
// Scripted replies request exactly these steps.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr auto trashReply = R"({"action":"trash","path":"Downloads/old receipts.zip"})";
const QString trashTitle = u"Moving “Downloads/old receipts.zip” to Trash"_s;
const QString trashReason = u"Move “Downloads/old receipts.zip” to the Trash"_s;

QString receipts()
{
    return PrivateDesktop::home(u"Downloads/old receipts.zip"_s);
}

// With an empty Trash.
void writeReceipts()
{
    QDir(PrivateDesktop::home(u".local/share/Trash"_s)).removeRecursively();
    PrivateDesktop::write(receipts(), "zip");
}

bool isInTrash()
{
    return !QFile::exists(receipts()) &&
           QFile::exists(PrivateDesktop::home(u".local/share/Trash/files/old receipts.zip"_s));
}

} // namespace

class UiApprovalTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void aStepIsAllowed_data();
    void aStepIsAllowed();
    void aStepIsRefused_data();
    void aStepIsRefused();
    void aStepIsAnsweredAfterAClickElsewhere_data();
    void aStepIsAnsweredAfterAClickElsewhere();
    void aQuestionHidesNothing();
    void theStopButtonRefuses();
    void aQuestionOutlivesTheWindow();
    void anAllowedKeyGoesToTheOtherApplication();
    void anApplicationIsQuitOnceAllowed();

private:
    bool ask(const QByteArray &reply, const QString &reason);
    bool answer(const QString &key, const QString &button);
};

// Scripts this reply and waits for the question with this text.
bool UiApprovalTest::ask(const QByteArray &reply, const QString &reason)
{
    ScriptedModel::writeAnswering(reply, orvane().modelPath());
    if (!orvane().startShown() || !orvane().waitFor(Role::label, u"Try"_s))
        return false;
    type(u"Tidy up"_s);
    Screen::pressKey(u"Return"_s);
    return orvane().waitFor(Role::button, u"Allow"_s) && orvane().shows(Role::label, reason) &&
           orvane().shows(Role::label, u"Confirm action"_s);
}

// With the key if given, otherwise by pressing the button.
bool UiApprovalTest::answer(const QString &key, const QString &button)
{
    if (key.isEmpty() && !orvane().press(Role::button, button))
        return false;
    if (!key.isEmpty())
        Screen::pressKey(key);
    return orvane().waitForNone(Role::button, u"Allow"_s);
}

void UiApprovalTest::aStepIsAllowed_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("by a press") << QString();
    QTest::newRow("by Return") << u"Return"_s;
    QTest::newRow("by Enter") << u"KP_Enter"_s;
}

void UiApprovalTest::aStepIsAllowed()
{
    QFETCH(QString, key);
    writeReceipts();
    QVERIFY(ask(trashReply, trashReason));
    QVERIFY(orvane().shows(Role::label, u"Waiting for approval: "_s + trashTitle));
    QVERIFY(QFile::exists(receipts()));
    QVERIFY(answer(key, u"Allow"_s));
    VERIFY_SOON(isInTrash());
    QVERIFY(orvane().waitFor(Role::label, u"Stopped: the same step was repeated."_s));
    QVERIFY(orvane().shows(Role::label, trashTitle));
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
}

void UiApprovalTest::aStepIsRefused_data()
{
    QTest::addColumn<QString>("key");
    QTest::newRow("by a press") << QString();
    QTest::newRow("by Escape") << u"Escape"_s;
}

void UiApprovalTest::aStepIsRefused()
{
    QFETCH(QString, key);
    writeReceipts();
    QVERIFY(ask(trashReply, trashReason));
    QVERIFY(answer(key, u"Cancel"_s));
    QVERIFY(orvane().waitFor(Role::label, u"Declined: "_s + trashTitle));
    QVERIFY(orvane().waitFor(Role::label, u"I didn't do that, as requested."_s));
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    QVERIFY(QFile::exists(receipts()));
}

void UiApprovalTest::aStepIsAnsweredAfterAClickElsewhere_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("allowed");
    QTest::newRow("the menu of models, Return")
        << Role::button << u"Qwen2.5 1.5B Instruct"_s << u"Return"_s << true;
    QTest::newRow("the menu of models, Escape")
        << Role::button << u"Qwen2.5 1.5B Instruct"_s << u"Escape"_s << false;
    QTest::newRow("the footer, Return") << Role::label << u"On-device"_s << u"Return"_s << true;
    QTest::newRow("the question, Return") << Role::label << trashReason << u"Return"_s << true;
    QTest::newRow("the question, Escape") << Role::label << trashReason << u"Escape"_s << false;
}

void UiApprovalTest::aStepIsAnsweredAfterAClickElsewhere()
{
    QFETCH(QString, role);
    QFETCH(QString, name);
    QFETCH(QString, key);
    QFETCH(bool, allowed);
    writeReceipts();
    QVERIFY(ask(trashReply, trashReason));
    QVERIFY(orvane().click(role, name));
    QVERIFY(answer(key, {}));
    if (allowed)
        VERIFY_SOON(isInTrash());
    QVERIFY(orvane().waitForEndOfRun());
    QCOMPARE(isInTrash(), allowed);
    QCOMPARE(orvane().shows(Role::label, u"Declined: "_s + trashTitle), !allowed);
}

// A file name that would look different if its control character took effect.
void UiApprovalTest::aQuestionHidesNothing()
{
    QVERIFY(ask(R"({"action":"trash","path":"Downloads/a\u202egpj.exe"})",
                u"Move “Downloads/a⟨U+202E⟩gpj.exe” to the Trash"_s));
    const QString title = u"Moving “Downloads/a⟨U+202E⟩gpj.exe” to Trash"_s;
    QVERIFY(orvane().shows(Role::label, u"Waiting for approval: "_s + title));
    QVERIFY(orvane().shows(Role::label, title));
    QVERIFY(answer(u"Escape"_s, {}));
    QVERIFY(orvane().waitFor(Role::label, u"Declined: "_s + title));
}

void UiApprovalTest::theStopButtonRefuses()
{
    writeReceipts();
    QVERIFY(ask(trashReply, trashReason));
    QVERIFY(orvane().press(Role::button, u"Stop"_s));
    QVERIFY(orvane().waitForNone(Role::button, u"Allow"_s));
    QVERIFY(orvane().waitFor(Role::label, u"Declined: "_s + trashTitle));
    QVERIFY(orvane().waitFor(Role::button, u"Send"_s));
    QVERIFY(QFile::exists(receipts()));
}

void UiApprovalTest::aQuestionOutlivesTheWindow()
{
    writeReceipts();
    QVERIFY(ask(trashReply, trashReason));
    Screen::pressKey(u"ctrl+w"_s);
    QVERIFY(orvane().waitForHidden());
    QVERIFY(QFile::exists(receipts()));
    QCOMPARE(orvane().startOnceMore(), 0);
    QVERIFY(orvane().waitForActive());
    QVERIFY(orvane().waitForFocus(u"Confirm action"_s));
    Screen::pressKey(u"Return"_s);
    VERIFY_SOON(isInTrash());
}

// The program's own window has the focus while it asks, and must not receive the key.
void UiApprovalTest::anAllowedKeyGoesToTheOtherApplication()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(ask(R"({"action":"press_key","key":"q","modifiers":"command"})", u"Quit Mousepad (Ctrl+Q)"_s));
    QVERIFY(orvane().press(Role::button, u"Allow"_s));
    VERIFY_SOON(!Screen::shows(u"Mousepad"_s));
    QVERIFY(orvane().waitFor(Role::label, u"Stopped: the same step was repeated."_s));
    QVERIFY(orvane().isRunning());
}

void UiApprovalTest::anApplicationIsQuitOnceAllowed()
{
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    QVERIFY(
        ask(R"({"action":"quit_app","app":"Mousepad"})", u"Quit Mousepad — unsaved work could be lost"_s));
    QVERIFY(Screen::shows(u"Mousepad"_s));
    QVERIFY(answer(u"Return"_s, {}));
    VERIFY_SOON(!Screen::shows(u"Mousepad"_s));
    QVERIFY(orvane().waitFor(Role::label, u"Closing Mousepad"_s));
}

QTEST_GUILESS_MAIN(UiApprovalTest)
#include "ApprovalTest.moc"
