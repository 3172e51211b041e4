// SPDX-License-Identifier: Apache-2.0
// The compositor ends, here sway: what runs says so in one sentence, and nothing hangs. All functions follow
// the same end.
#include "Desktop/Linux/Wayland/Connection.h"
#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"
#include "applications/support/OrvaneProgram.h"
#include "ui/support/ScriptedModel.h"
#include "ui/support/UiTest.h"

#include <QDir>
#include <QTemporaryDir>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QString loss = u"The Wayland compositor has closed the connection; start Orvane again."_s;

bool eventually(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, PrivateDesktop::patience);
}

} // namespace

class UiCompositorLossTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aQuestionInProgressEnds();
    void everyActionThatNeedsTheDesktopIsRefused_data();
    void everyActionThatNeedsTheDesktopIsRefused();
    void filesCanStillBeHandled();
    void aTaskInATerminalEndsWithTheSentence();
    void theWindowsProgramEnds();
    void cleanupTestCase();

private:
    void startTask();
    QString endCompositorDuringAQuestion();

    QTemporaryDir m_folder;
    QProcess m_task;
    QByteArray m_said;
    std::optional<ActionRunner> m_runner;
    std::optional<WindowDriver> m_window;
    QString m_answerToTheQuestion;
};

// Starts a task in a terminal, which then asks for permission.
void UiCompositorLossTest::startTask()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ORVANE_HOME"_s, m_folder.path());
    environment.insert(u"TERM"_s, u"xterm"_s);
    m_task.setProcessEnvironment(environment);
    m_task.setProcessChannelMode(QProcess::MergedChannels);
    m_task.start(u"script"_s, {u"--quiet"_s, u"--return"_s, u"--command"_s,
                               OrvaneProgram::path() + u" do 'Quit Mousepad'"_s, u"/dev/null"_s});
}

// The compositor is stopped, so that the question reaches it, but is never answered.
QString UiCompositorLossTest::endCompositorDuringAQuestion()
{
    WaylandConnection connection;
    const auto compositor = static_cast<pid_t>(connection.compositorProcess());
    if (compositor <= 0 || ::kill(compositor, SIGSTOP) != 0)
        return u"The compositor can't be stopped."_s;
    QCoro::Task<void> question = connection.roundTrip();
    ::kill(compositor, SIGKILL);
    try {
        Awaited::result(std::move(question));
    } catch (const PlatformError &error) {
        return error.errorDescription();
    }
    return u"It was answered."_s;
}

void UiCompositorLossTest::initTestCase()
{
    if (!PrivateDesktop::isHere())
        QFAIL("This test ends the compositor: start it with scripts/private-desktop.");
    const QString models = m_folder.filePath(u"Orvane/Models"_s);
    QDir().mkpath(models);
    ScriptedModel::writeAnswering(R"({"action":"quit_app","app":"Mousepad"})",
                                  models + u"/qwen2.5-1.5b-instruct-q4_k_m.gguf"_s);
    m_window.emplace();
    QVERIFY(m_window->startShown());
    QVERIFY(PrivateDesktop::open(u"mousepad"_s, {}, u"Mousepad"_s));
    m_runner.emplace();
    QVERIFY(!m_runner->perform("list_windows").hasFailed);
    startTask();
    QVERIFY(eventually([this] { return (m_said += m_task.readAll()).contains("(y/n)"); }));
    m_answerToTheQuestion = endCompositorDuringAQuestion();
}

void UiCompositorLossTest::cleanupTestCase()
{
    m_task.kill();
    m_task.waitForFinished();
}

void UiCompositorLossTest::aQuestionInProgressEnds()
{
    QCOMPARE(m_answerToTheQuestion, loss);
}

void UiCompositorLossTest::everyActionThatNeedsTheDesktopIsRefused_data()
{
    QTest::addColumn<QString>("action");
    for (const char *action :
         {"open_app", "focus_app", "quit_app", "type_text", "press_key", "new_tab", "click", "read_ui",
          "list_windows", "screenshot", "open_url", "web_search", "open_path", "applescript"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

void UiCompositorLossTest::everyActionThatNeedsTheDesktopIsRefused()
{
    QFETCH(QString, action);
    const Outcome outcome = m_runner->perform(action.toLatin1().constData(), {});
    QVERIFY(outcome.hasFailed);
    QCOMPARE(outcome.line, loss);
}

void UiCompositorLossTest::filesCanStillBeHandled()
{
    const Outcome outcome =
        m_runner->perform("create_folder", {{"name", u"After"_s}, {"in", u"Documents"_s}});
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
    QVERIFY(QDir(PrivateDesktop::home(u"Documents/After"_s)).exists());
}

void UiCompositorLossTest::aTaskInATerminalEndsWithTheSentence()
{
    m_task.write("y\n");
    const auto hasEnded = [this] {
        m_said += m_task.readAll();
        return m_task.state() == QProcess::NotRunning;
    };
    QVERIFY2(eventually(hasEnded), m_said);
    QCOMPARE(m_task.exitStatus(), QProcess::NormalExit);
    QVERIFY2(m_said.contains(loss.toUtf8()), m_said);
    QCOMPARE(m_said.count(loss.toUtf8()), 1);
    QCOMPARE(m_task.exitCode(), 1);
}

// Qt 6.4 ends a program without its compositor.
void UiCompositorLossTest::theWindowsProgramEnds()
{
    QVERIFY(eventually([this] { return !m_window->isRunning(); }));
}

QTEST_GUILESS_MAIN(UiCompositorLossTest)
#include "CompositorLossTest.moc"
