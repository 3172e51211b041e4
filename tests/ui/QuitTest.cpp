// SPDX-License-Identifier: Apache-2.0
// Quitting ends the program with status 0, whatever it is doing.
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include "Models/Download/LocalHttpServer.h"
#include "Models/LocalModel.h"

#include <QFile>

#include <csignal>

using namespace Qt::StringLiterals;

class UiQuitTest : public UiTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void itEndsWhileNothingRuns();
    void itEndsDuringAReply();
    void itEndsDuringADownload();
    void itEndsWhileAQuestionIsOpen();

private:
    bool quit();
    bool send(const QString &task);
};

void UiQuitTest::initTestCase_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("Ctrl+Q") << 0;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

// Whether it ends as it should.
bool UiQuitTest::quit()
{
    QFETCH_GLOBAL(int, signal);
    if (signal == 0)
        Screen::pressKey(u"ctrl+q"_s);
    else
        orvane().signal(signal);
    return orvane().waitForEnd() == 0 && Screen::windows().isEmpty();
}

bool UiQuitTest::send(const QString &task)
{
    if (!orvane().startShown() || !orvane().waitFor(Role::label, u"Try"_s))
        return false;
    type(task);
    Screen::pressKey(u"Return"_s);
    return orvane().waitFor(Role::button, u"Stop"_s);
}

void UiQuitTest::itEndsWhileNothingRuns()
{
    QVERIFY(orvane().startShown());
    QVERIFY(quit());
}

void UiQuitTest::itEndsDuringAReply()
{
    ScriptedModel::writeBabbling(orvane().modelPath());
    QVERIFY(send(u"Babble"_s));
    VERIFY_SOON(!orvane().texts().filter(u"abab"_s).isEmpty());
    QVERIFY(quit());
}

void UiQuitTest::itEndsDuringADownload()
{
    LocalHttpServer server;
    LocalHttpServer::Resource resource;
    resource.content = QByteArray(1'000'000, 'x');
    resource.holdAfter = resource.content.size() / 2;
    server.set(LocalModel::catalog().constFirst().url.path(), resource);
    orvane().setVariable(u"ORVANE_MODEL_MIRROR"_s, server.url(QString()).toString());
    QVERIFY(orvane().startShown());
    QVERIFY(orvane().press(Role::button, u"Download Qwen2.5 1.5B Instruct"_s));
    QVERIFY(orvane().waitFor(Role::label, u"50% of ~986 MB"_s));
    QVERIFY(quit());
    QVERIFY(!QFile::exists(orvane().modelPath()));
}

void UiQuitTest::itEndsWhileAQuestionIsOpen()
{
    const QString path = PrivateDesktop::home(u"Downloads/keep.txt"_s);
    PrivateDesktop::write(path, "kept");
    ScriptedModel::writeAnswering(R"({"action":"trash","path":"Downloads/keep.txt"})", orvane().modelPath());
    QVERIFY(send(u"Tidy up"_s));
    QVERIFY(orvane().waitFor(Role::button, u"Allow"_s));
    QVERIFY(quit());
    QVERIFY(QFile::exists(path));
}

QTEST_GUILESS_MAIN(UiQuitTest)
#include "QuitTest.moc"
