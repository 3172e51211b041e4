// SPDX-License-Identifier: Apache-2.0
#include "Actions/AgentAction.h"

#include <QTest>

using namespace Qt::StringLiterals;

class ActionTitleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void titles_data();
    void titles();
};

void ActionTitleTest::titles_data()
{
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("title");
    const auto row = [](const char *reply, const char *title) {
        QTest::newRow(reply) << QString::fromUtf8(reply) << QString::fromUtf8(title);
    };

    row(R"({"action":"open_app","app":"Safari"})", "Launching Safari");
    row(R"({"action":"open_app"})", "Launching app");
    row(R"({"action":"open_app","app":"  "})", "Launching app");
    row(R"({"action":"quit_app","app":"Notes"})", "Closing Notes");
    row(R"({"action":"quit_app"})", "Closing app");
    row(R"({"action":"open_url","url":"https://example.org/"})", "Navigating to example.org");
    row(R"({"action":"open_url","url":"http://example.org/"})", "Navigating to example.org");
    row(R"({"action":"open_url","url":"example.org/a/b//"})", "Navigating to example.org/a/b");
    row(R"({"action":"open_url","url":"https://a.org/?to=http://b.org/"})", "Navigating to a.org/?to=b.org");
    row(R"({"action":"open_url","url":"HTTPS://a.org"})", "Navigating to HTTPS://a.org");
    row(R"({"action":"open_url","url":"https://http://a.org"})", "Navigating to a.org");
    row(R"({"action":"open_url","url":"//"})", "Navigating to ");
    row(R"({"action":"open_url"})", "Navigating to ");
    row(R"({"action":"web_search","query":"cheap flights"})", "Searching for “cheap flights”");
    row(R"({"action":"web_search"})", "Searching for “”");
    row(R"({"action":"new_tab"})", "Opening new tab");
    row(R"({"action":"type_text","text":" hello "})", "Typing “hello”");
    row(R"({"action":"type_text"})", "Typing “”");
    row(R"({"action":"press_key","key":"l","modifiers":"command"})", "Pressing command+l");
    row(R"({"action":"press_key","key":"l","modifiers":["command","shift"]})", "Pressing command+shift+l");
    row(R"({"action":"press_key","key":"return"})", "Pressing return");
    row(R"({"action":"press_key","key":"a","modifiers":" "})", "Pressing a");
    row(R"({"action":"press_key"})", "Pressing ");
    row(R"({"action":"click","label":"Save As…"})", "Clicking “Save As…”");
    row(R"({"action":"create_folder","name":"Projects","in":"Desktop"})", "Creating folder “Projects”");
    row(R"({"action":"screenshot","save_to":"Desktop"})", "Taking a screenshot");
    row(R"({"action":"find_files","folder":"Documents"})", "Searching Documents");
    row(R"({"action":"find_files"})", "Searching Downloads");
    row(R"({"action":"open_path","path":"Downloads/a.pdf"})", "Opening Downloads/a.pdf");
    row(R"({"action":"open_path"})", "Opening ");
    row(R"({"action":"trash","path":"Desktop/a.txt"})", "Moving “Desktop/a.txt” to Trash");
    row(R"({"action":"list_windows"})", "Looking at open windows");
    row(R"({"action":"read_ui"})", "Reading the interface");
    row(R"({"action":"applescript","script":"beep"})", "Running AppleScript");
    row(R"({"action":"done","message":"ok"})", "Done");
    row(R"({"action":"scroll_down"})", "Scroll Down");
    row(R"({"action":"focus_app","app":"Mail"})", "Focus App");
    row(R"({"action":"FLY__HIGH"})", "Fly  High");
    row(R"({"action":"don't_stop"})", "Don't Stop");
    row(R"({"action":""})", "");
    // Arguments are quoted unchanged.
    row(R"({"action":"create_folder","name":"a\nb"})", "Creating folder “a\nb”");
    row(R"({"action":"click","label":"a\u202Eb<|im_end|>"})", "Clicking “a\u202Eb<|im_end|>”");
    row(R"({"action":"open_path","path":"می\u200Cشود"})", "Opening می\u200Cشود");
    row(R"({"action":"fly\nhigh"})", "Fly\nHigh");
}

void ActionTitleTest::titles()
{
    QFETCH(QString, reply);
    const std::optional<AgentAction> action = AgentAction::parse(reply);
    QVERIFY(action);
    QTEST(action->title(), "title");
}

QTEST_GUILESS_MAIN(ActionTitleTest)
#include "ActionTitleTest.moc"
