// SPDX-License-Identifier: Apache-2.0
// The setup card: model choice and a download from a server controlled by the test.
#include "ui/support/UiTest.h"

#include "Models/Download/LocalHttpServer.h"
#include "Models/LocalModel.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

const QString downloadDefault = u"Download Qwen2.5 1.5B Instruct"_s;
const QString defaultChoice = u"Qwen2.5 1.5B Instruct — Fast and light · ~1 GB"_s;
const QString otherChoice = u"Llama 3.2 3B Instruct — Smarter planning · ~2 GB"_s;

LocalHttpServer::Resource practiceModel()
{
    LocalHttpServer::Resource resource;
    resource.content = PrivateDesktop::read(QStringLiteral(ORVANE_PRACTICE_MODEL));
    return resource;
}

} // namespace

class UiSetupTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAModelTheCardIsShown();
    void aModelIsChosenWithTheKeyboard();
    void aDownloadTellsHowFarItIs();
    void aCancelledDownloadCanBeStartedAgain();
    void aFailedDownloadCanBeTriedAgain_data();
    void aFailedDownloadCanBeTriedAgain();
    void aBrokenModelCanBeReplaced();
    void aBrokenModelIsDownloadedAnew();

private:
    bool startWithoutModel();
    void serve(const LocalHttpServer::Resource &resource);
    bool waitForExamples() { return orvane().waitFor(Role::label, u"Try"_s); }

    LocalHttpServer m_server;
};

bool UiSetupTest::startWithoutModel()
{
    orvane().setVariable(u"ORVANE_MODEL_MIRROR"_s, m_server.url(QString()).toString());
    return orvane().startShown() && orvane().waitFor(Role::button, downloadDefault);
}

void UiSetupTest::serve(const LocalHttpServer::Resource &resource)
{
    m_server.set(LocalModel::catalog().constFirst().url.path(), resource);
}

void UiSetupTest::withoutAModelTheCardIsShown()
{
    QVERIFY(startWithoutModel());
    const QStringList texts = orvane().texts();
    QVERIFY(texts.contains(u"Set up your private AI"_s));
    QVERIFY(
        texts.contains(u"Orvane runs a language model entirely on your computer. The one-time download is "
                       "stored locally; nothing you type ever leaves this device."_s));
    QVERIFY(texts.contains(u"On-device"_s));
    const auto picker = orvane().find(Role::picker, u"Model"_s);
    QVERIFY(picker);
    QCOMPARE(picker->description, defaultChoice);
    QVERIFY(orvane().shows(Role::field, u"Tell your computer what to do…"_s));
    QVERIFY(!texts.contains(u"Try"_s));
    QVERIFY(!orvane().shows(Role::button, u"Try again"_s));
    QVERIFY(!orvane().shows(Role::button, u"Cancel"_s));
    // The footer's model menu appears once a model is loaded.
    QVERIFY(!orvane().shows(Role::button, u"Qwen2.5 1.5B Instruct"_s));
}

void UiSetupTest::aModelIsChosenWithTheKeyboard()
{
    QVERIFY(startWithoutModel());
    for (int presses = 0; presses < 10 && orvane().focused() != Role::picker + u" Model"_s; ++presses)
        Screen::pressKey(u"Tab"_s);
    QCOMPARE(orvane().focused(), Role::picker + u" Model"_s);
    Screen::pressKey(u"Return"_s);
    VERIFY_SOON(orvane().described().contains(otherChoice));
    Screen::pressKey(u"Down"_s);
    Screen::pressKey(u"Return"_s);
    QVERIFY(orvane().waitFor(Role::button, u"Download Llama 3.2 3B Instruct"_s));
    QCOMPARE(orvane().find(Role::picker, u"Model"_s)->description, otherChoice);

    // The choice is persistent.
    Screen::pressKey(u"ctrl+q"_s);
    QCOMPARE(orvane().waitForEnd(), 0);
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::button, u"Download Llama 3.2 3B Instruct"_s));
}

void UiSetupTest::aDownloadTellsHowFarItIs()
{
    LocalHttpServer::Resource model = practiceModel();
    const qint64 begun = model.content.size() * 375 / 1000;
    const qint64 almostAll = model.content.size() * 999 / 1000;
    model.holdAfter = begun;
    serve(model);
    QVERIFY(startWithoutModel());
    QVERIFY(orvane().press(Role::button, downloadDefault));
    QVERIFY(orvane().waitFor(Role::label, u"37% of ~986 MB"_s));
    QVERIFY(orvane().shows(u"progress bar"_s, u"Download"_s));
    QVERIFY(orvane().shows(Role::button, u"Cancel"_s));
    QVERIFY(!orvane().shows(Role::button, downloadDefault));
    m_server.release(almostAll - begun);
    QVERIFY(orvane().waitFor(Role::label, u"99% of ~986 MB"_s));
    m_server.release();
    QVERIFY(waitForExamples());
    QVERIFY(!orvane().shows(Role::label, u"Set up your private AI"_s));
    QVERIFY(orvane().shows(Role::button, u"Qwen2.5 1.5B Instruct"_s));
    QCOMPARE(PrivateDesktop::read(orvane().modelPath()), model.content);
}

void UiSetupTest::aCancelledDownloadCanBeStartedAgain()
{
    LocalHttpServer::Resource slow = practiceModel();
    slow.holdAfter = slow.content.size() / 10;
    serve(slow);
    QVERIFY(startWithoutModel());
    QVERIFY(orvane().press(Role::button, downloadDefault));
    QVERIFY(orvane().waitFor(Role::button, u"Cancel"_s));
    QVERIFY(orvane().press(Role::button, u"Cancel"_s));
    QVERIFY(orvane().waitFor(Role::button, downloadDefault));
    QVERIFY(!orvane().shows(Role::button, u"Try again"_s)); // no failure is shown
    QVERIFY(!QFile::exists(orvane().modelPath()));

    serve(practiceModel());
    QVERIFY(orvane().press(Role::button, downloadDefault));
    QVERIFY(waitForExamples());
}

void UiSetupTest::aFailedDownloadCanBeTriedAgain_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<qint64>("dropAfter");
    QTest::addColumn<QString>("message");
    QTest::newRow("not found") << 404 << qint64(-1) << u"Download failed (HTTP 404)."_s;
    QTest::newRow("connection lost") << 200 << qint64(100'000)
                                     << u"The connection was lost during the download."_s;
}

void UiSetupTest::aFailedDownloadCanBeTriedAgain()
{
    QFETCH(int, status);
    QFETCH(qint64, dropAfter);
    QFETCH(QString, message);
    LocalHttpServer::Resource failing = practiceModel();
    failing.status = status;
    failing.dropAfter = dropAfter;
    serve(failing);
    QVERIFY(startWithoutModel());
    QVERIFY(orvane().press(Role::button, downloadDefault));
    QVERIFY(orvane().waitFor(Role::button, u"Try again"_s));
    QVERIFY2(orvane().texts().contains(message), qPrintable(orvane().texts().join(u'\n')));
    QVERIFY(!QFile::exists(orvane().modelPath()));

    serve(practiceModel());
    QVERIFY(orvane().press(Role::button, u"Try again"_s));
    QVERIFY(waitForExamples());
}

void UiSetupTest::aBrokenModelCanBeReplaced()
{
    PrivateDesktop::write(orvane().modelPath(), "no model at all");
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::button, u"Try again"_s));
    orvane().installPracticeModel();
    QVERIFY(orvane().press(Role::button, u"Try again"_s));
    QVERIFY(waitForExamples());
}

void UiSetupTest::aBrokenModelIsDownloadedAnew()
{
    serve(practiceModel());
    orvane().setVariable(u"ORVANE_MODEL_MIRROR"_s, m_server.url(QString()).toString());
    PrivateDesktop::write(orvane().modelPath(), "no model at all");
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().waitFor(Role::button, u"Try again"_s));
    QVERIFY(orvane().press(Role::button, u"Try again"_s));
    QVERIFY(waitForExamples());
    QCOMPARE(PrivateDesktop::read(orvane().modelPath()), practiceModel().content);
}

QTEST_GUILESS_MAIN(UiSetupTest)
#include "SetupTest.moc"
