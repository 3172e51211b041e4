// SPDX-License-Identifier: Apache-2.0
// Tasks from the empty window to their effect on the desktop, planned by the practice model.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QDir>
#include <QFile>
#include <QImage>

using namespace Qt::StringLiterals;

namespace {

const QString screenshotTask = u"Take a screenshot and save it to Downloads"_s;

QStringList screenshots()
{
    return QDir(PrivateDesktop::home(u"Downloads"_s)).entryList({u"Screenshot *.png"_s});
}

} // namespace

class UiTaskTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void anExampleWaitsInTheField();
    void aTypedTaskIsCarriedOut();
    void aRiskyTaskIsCarriedOutOnceAllowed();
    void theSendButtonSends();
    void withoutAModelTheTextStays();
    void aBlankTaskDoesNothing();
    void whileATaskRunsOnlyStopIsOffered();
};

void UiTaskTest::anExampleWaitsInTheField()
{
    orvane().installPracticeModel();
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    for (const QString &example : {u"Open Safari and search Google for MacBook Air"_s,
                                   u"Open Finder and create a folder called Projects"_s, screenshotTask,
                                   u"Open my Downloads folder and find the latest PDF"_s})
        QVERIFY2(orvane().shows(Role::button, example), qPrintable(example));
    QVERIFY(orvane().press(Role::button, screenshotTask));
    QVERIFY(orvane().waitForFieldText(screenshotTask));
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    QVERIFY(orvane().shows(Role::label, u"Try"_s)); // no task was started
    QCOMPARE(screenshots(), QStringList());

    Screen::pressKey(u"Return"_s);
    VERIFY_SOON(screenshots().size() == 1);
    QVERIFY(orvane().waitFor(Role::label, u"Taking a screenshot"_s));
    QVERIFY(orvane().waitForEndOfRun());
    QCOMPARE(orvane().fieldText(), QString());
    QVERIFY(orvane().texts().contains(screenshotTask)); // the turn's heading
    QVERIFY(!orvane().shows(Role::label, u"Try"_s));
    QCOMPARE(QImage(PrivateDesktop::home(u"Downloads/"_s + screenshots().first())).size(), QSize(1280, 800));
}

void UiTaskTest::aTypedTaskIsCarriedOut()
{
    const QString task = u"Open Finder and create a folder called Projects"_s;
    orvane().installPracticeModel();
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(task);
    QVERIFY(orvane().waitForFieldText(task));
    Screen::pressKey(u"Return"_s);
    VERIFY_SOON(QDir(PrivateDesktop::home(u"Desktop/Projects"_s)).exists());
    QVERIFY(orvane().waitForEndOfRun());
    const QStringList texts = orvane().texts();
    QVERIFY2(texts.contains(task), qPrintable(texts.join(u'\n')));
    QVERIFY2(texts.contains(u"Creating folder “Projects”"_s), qPrintable(texts.join(u'\n')));
    QVERIFY(Screen::shows(u"Thunar"_s));
}

void UiTaskTest::aRiskyTaskIsCarriedOutOnceAllowed()
{
    const QString path = PrivateDesktop::home(u"Downloads/old receipts.zip"_s);
    PrivateDesktop::write(path, "zip");
    orvane().installPracticeModel();
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Move old receipts.zip in Downloads to the Trash"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::button, u"Allow"_s));
    QVERIFY(orvane().shows(Role::label, u"Move “Downloads/old receipts.zip” to the Trash"_s));
    Screen::pressKey(u"Return"_s);
    VERIFY_SOON(!QFile::exists(path));
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"Moving “Downloads/old receipts.zip” to Trash"_s));
    QVERIFY(QFile::exists(PrivateDesktop::home(u".local/share/Trash/files/old receipts.zip"_s)));
}

void UiTaskTest::theSendButtonSends()
{
    ScriptedModel::writeAnswering(R"({"action":"done","message":"All is well."})", orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Is all well?"_s);
    QVERIFY(orvane().press(Role::button, u"Send"_s));
    QVERIFY(orvane().waitFor(Role::label, u"All is well."_s));
    QVERIFY(orvane().shows(Role::label, u"Is all well?"_s));
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
}

void UiTaskTest::withoutAModelTheTextStays()
{
    const QString task = u"Öffne „Café“ — bitte 👍🏽"_s;
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Set up your private AI"_s));
    type(task);
    QVERIFY(orvane().waitForFieldText(task));
    Screen::pressKey(u"Return"_s);
    type(u"!"_s); // arrives after Return
    QVERIFY(orvane().waitForFieldText(task + u'!'));
    QVERIFY(orvane().press(Role::button, u"Send"_s));
    QCOMPARE(orvane().fieldText(), task + u'!');
    QVERIFY(orvane().shows(Role::label, u"Set up your private AI"_s));
}

void UiTaskTest::aBlankTaskDoesNothing()
{
    orvane().installPracticeModel();
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"   "_s);
    QVERIFY(orvane().waitForFieldText(u"   "_s));
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitForFieldText(QString()));
    QVERIFY(orvane().shows(Role::label, u"Try"_s));
    QVERIFY(!orvane().shows(Role::button, u"Stop"_s));
}

void UiTaskTest::whileATaskRunsOnlyStopIsOffered()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::label, u"Try"_s));
    type(u"Babble"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::label, u"Thinking…"_s));
    QVERIFY(orvane().shows(Role::button, u"Stop"_s));
    QVERIFY(!orvane().shows(Role::button, u"Send"_s));
    type(u"Not now"_s);
    // The reply is shown while it streams.
    VERIFY_SOON(orvane().texts().filter(u"abab"_s).size() == 1);
    QVERIFY(orvane().waitForEndOfRun());
    QVERIFY(orvane().shows(Role::label, u"I couldn't work out a plan for that."_s));
    QVERIFY(!orvane().shows(Role::label, u"Thinking…"_s));
    QVERIFY(!orvane().shows(Role::button, u"Stop"_s));
    QVERIFY(orvane().waitForFocus(u"Tell your computer what to do…"_s));
    // The field accepted nothing meanwhile.
    QCOMPARE(orvane().fieldText(), QString());
}

QTEST_GUILESS_MAIN(UiTaskTest)
#include "TaskTest.moc"
