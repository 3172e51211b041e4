// SPDX-License-Identifier: Apache-2.0
#include "Actions/Safety.h"
#include "ActionBench.h"
#include "Base/PlatformWords.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The expected questions name the keys of a Mac.
QString withKeysOfThisPlatform(QString question)
{
    const PlatformWords &words = PlatformWords::current();
    return question.replace(u"⌘⌫"_s, words.deleteKeys).replace(u"⌘Q"_s, words.quitKeys);
}

} // namespace

class SafetyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void policy_data();
    void policy();
    void harmlessApplicationsQuitWithoutConfirmation_data();
    void harmlessApplicationsQuitWithoutConfirmation();
    void riskyWordsNeedConfirmation_data();
    void riskyWordsNeedConfirmation();
    void returnNeedsConfirmationInMessagingApplications_data();
    void returnNeedsConfirmationInMessagingApplications();
    void theListOfHarmlessApplicationsIsExact();
    void theTargetApplicationIsJudgedToo_data();
    void theTargetApplicationIsJudgedToo();
    void theTargetControlIsJudgedToo_data();
    void theTargetControlIsJudgedToo();
    void actionsWithoutARuleAreSafe_data();
    void actionsWithoutARuleAreSafe();
    void anUnknownFrontmostApplicationHasNoName();
    void theFrontmostApplicationIsReadAfreshEachTime();
    void aFailingDesktopCountsAsEmpty();

private:
    static ActionTarget targetIn(const std::optional<QString> &frontmostName)
    {
        ActionTarget target;
        target.frontmost.emplace().localizedName = frontmostName;
        return target;
    }

    // The question for the user; nothing if the action is safe.
    static QString question(const QString &reply, const QString &front)
    {
        const std::optional<AgentAction> action = AgentAction::parse(reply);
        const auto name = front.isNull() ? std::nullopt : std::optional(front);
        const Risk risk = Safety::assess(action.value(), targetIn(name));
        return risk.kind == Risk::Kind::Safe ? QString() : risk.reason;
    }
};

void SafetyTest::policy_data()
{
    QTest::addColumn<QString>("front");
    QTest::addColumn<QString>("reply");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *front, const char *reply, const char *expected) {
        QTest::addRow("%s in %s", reply, front) << QString::fromUtf8(front) << QString::fromUtf8(reply)
                                                << withKeysOfThisPlatform(QString::fromUtf8(expected));
    };
    const char *safe = nullptr;

    row("Finder", R"({"action":"trash","path":"Desktop/A.txt"})", "Move “Desktop/A.txt” to the Trash");
    row("Finder", R"({"action":"trash"})", "Move “item” to the Trash");
    row("Finder", R"({"action":"trash","path":" "})", "Move “item” to the Trash");

    row("Finder", R"({"action":"quit_app","app":"Spotify"})", safe);
    row("Finder", R"({"action":"quit_app","app":"SPOTIFY"})", safe);
    row("Finder", R"({"action":"quit_app","app":" Spotify "})", safe);
    row("Finder", R"({"action":"quit_app","app":"Safari"})", "Quit Safari — unsaved work could be lost");
    row("Finder", R"({"action":"quit_app","app":"sAFARI"})", "Quit sAFARI — unsaved work could be lost");
    row("Finder", R"({"action":"quit_app","app":"Spotify Beta"})",
        "Quit Spotify Beta — unsaved work could be lost");
    row("Finder", R"({"action":"quit_app"})", "Quit the app — unsaved work could be lost");

    row("Finder", R"({"action":"applescript","script":"tell app\n\tbeep\nend"})",
        "Run a custom AppleScript:\ntell app\n\tbeep\nend");
    row("Finder", R"({"action":"applescript"})", "Run a custom AppleScript:\n");

    row("Mail", R"({"action":"click","label":"Send"})", "Click “Send” in Mail");
    row(nullptr, R"({"action":"click","label":"Send"})", "Click “Send” in ");
    row("visual studio code", R"({"action":"click","label":"Delete File"})",
        "Click “Delete File” in Visual Studio Code");
    row("WhatsApp", R"({"action":"click","label":"SEND now"})", "Click “SEND now” in Whatsapp");
    row("Safari", R"({"action":"click","label":"Payment options"})", "Click “Payment options” in Safari");
    row("Safari", R"({"action":"click","label":"Resubmit"})", "Click “Resubmit” in Safari");
    row("Safari", R"({"action":"click","label":"Order"})", safe);
    row("Safari", R"({"action":"click","label":"Save"})", safe);
    row("Safari", R"({"action":"click"})", safe);

    row("Messages", R"({"action":"press_key","key":"Return"})",
        "Press Return in Messages — this may send a message");
    row("Messages", R"({"action":"press_key","key":"ENTER","modifiers":"shift"})",
        "Press Return in Messages — this may send a message");
    row("Microsoft Outlook", R"({"action":"press_key","key":"return"})",
        "Press Return in Microsoft Outlook — this may send a message");
    row("Slack Beta", R"({"action":"press_key","key":"return"})",
        "Press Return in Slack Beta — this may send a message");
    row("TextEdit", R"({"action":"press_key","key":"Return"})", safe);
    row("TextEdit", R"({"action":"press_key","key":"return","modifiers":"command"})", safe);
    row(nullptr, R"({"action":"press_key","key":"return"})", safe);
    row("Messages", R"({"action":"press_key","key":"space"})", safe);

    row("Finder", R"({"action":"press_key","key":"Delete","modifiers":"command"})",
        "Delete the selected item (⌘⌫)");
    row("Finder", R"({"action":"press_key","key":"backspace","modifiers":"Shift+COMMAND"})",
        "Delete the selected item (⌘⌫)");
    row("Finder", R"({"action":"press_key","key":"backspace","modifiers":"cmd"})", safe);
    row("Finder", R"({"action":"press_key","key":"delete"})", safe);

    row("Safari", R"({"action":"press_key","key":"q","modifiers":"command"})", "Quit Safari (⌘Q)");
    row("Safari", R"({"action":"press_key","key":"Q","modifiers":["command","shift"]})", "Quit Safari (⌘Q)");
    row(nullptr, R"({"action":"press_key","key":"q","modifiers":"command"})", "Quit  (⌘Q)");
    row("Safari", R"({"action":"press_key","key":"q","modifiers":"option"})", safe);
    row("Safari", R"({"action":"press_key","key":"w","modifiers":"command"})", safe);
    row("Safari", R"({"action":"press_key"})", safe);

    row("Finder", R"({"action":"open_url","url":"x-apple.systempreferences:com.apple.Sound"})", safe);
    row("Finder", R"({"action":"open_url","url":"X-Apple.SystemPreferences:com.apple.RESET"})",
        "Modify system settings");
    row("Finder", R"({"action":"open_url","url":"https://example.org/reset"})", safe);
    row("Finder", R"({"action":"open_url"})", safe);

    // The question quotes the argument unchanged.
    row("Finder", R"({"action":"trash","path":"a\nb"})", "Move “a\nb” to the Trash");
    row("Finder", R"({"action":"trash","path":"a\u202Efdp.b"})", "Move “a\u202Efdp.b” to the Trash");
    row("Finder", R"({"action":"trash","path":"می\u200Cشود \u0600١"})",
        "Move “می\u200Cشود \u0600١” to the Trash");
    row("Finder", R"({"action":"quit_app","app":"<|a|> |> b"})",
        "Quit <|a|> |> b — unsaved work could be lost");
    row("Mail", R"({"action":"click","label":"Se\u200Bnd"})", "Click “Se\u200Bnd” in Mail");
    row("Finder", R"({"action":"applescript","script":"a\u202E\r\nb"})",
        "Run a custom AppleScript:\na\u202E\r\nb");
}

void SafetyTest::policy()
{
    QFETCH(QString, front);
    QFETCH(QString, reply);
    QTEST(question(reply, front), "expected");
}

void SafetyTest::harmlessApplicationsQuitWithoutConfirmation_data()
{
    QTest::addColumn<QString>("app");
    for (const char *app : {"Spotify", "Music", "Podcasts", "TV", "Calculator", "Maps", "Photos", "News",
                            "Stocks", "Weather", "Chess", "Preview", "System Settings", "Activity Monitor"})
        QTest::newRow(app) << QString::fromLatin1(app);
}

void SafetyTest::harmlessApplicationsQuitWithoutConfirmation()
{
    QFETCH(QString, app);
    QCOMPARE(question(uR"({"action":"quit_app","app":"%1"})"_s.arg(app), u"Finder"_s), QString());
}

void SafetyTest::riskyWordsNeedConfirmation_data()
{
    QTest::addColumn<QString>("word");
    for (const char *word : {"send", "delete", "remove", "buy", "purchase", "pay", "place order", "checkout",
                             "submit", "confirm order", "erase", "empty trash", "transfer"})
        QTest::newRow(word) << QString::fromLatin1(word);
}

void SafetyTest::riskyWordsNeedConfirmation()
{
    QFETCH(QString, word);
    const QString label = u"the "_s + word.toUpper() + u" button"_s;
    QCOMPARE(question(uR"({"action":"click","label":"%1"})"_s.arg(label), u"Safari"_s),
             u"Click “%1” in Safari"_s.arg(label));
}

void SafetyTest::returnNeedsConfirmationInMessagingApplications_data()
{
    QTest::addColumn<QString>("app");
    for (const char *app :
         {"Messages", "Mail", "Slack", "Discord", "Telegram", "Whatsapp", "Outlook", "Teams", "Signal"})
        QTest::newRow(app) << QString::fromLatin1(app);
}

void SafetyTest::returnNeedsConfirmationInMessagingApplications()
{
    QFETCH(QString, app);
    QCOMPARE(question(uR"({"action":"press_key","key":"return"})"_s, app.toUpper()),
             u"Press Return in %1 — this may send a message"_s.arg(app));
}

void SafetyTest::theListOfHarmlessApplicationsIsExact()
{
    QCOMPARE(Safety::quitSafe().size(), 14);
}

void SafetyTest::theTargetApplicationIsJudgedToo_data()
{
    QTest::addColumn<QString>("app");
    QTest::addColumn<std::optional<QString>>("name");
    QTest::addColumn<QString>("asked"); // empty if safe
    using Name = std::optional<QString>;

    QTest::newRow("the same") << u"spotify"_s << Name(u"Spotify"_s) << QString();
    QTest::newRow("another harmless one") << u"TV"_s << Name(u"Music"_s) << QString();
    QTest::newRow("a role") << u"Preview"_s << Name(u"Firefox ESR"_s)
                            << u"Quit Preview (Firefox ESR) — unsaved work could be lost"_s;
    QTest::newRow("a name that contains it") << u"news"_s << Name(u"Newsreader Pro"_s)
                                             << u"Quit news (Newsreader Pro) — unsaved work could be lost"_s;
    QTest::newRow("a translated harmless one") << u"Calculator"_s << Name(u"Rechner"_s) << QString();
    QTest::newRow("an application without a name")
        << u"Maps"_s << Name() << u"Quit Maps — unsaved work could be lost"_s;
    QTest::newRow("the word is not harmless")
        << u"play"_s << Name(u"Music"_s) << u"Quit play (Music) — unsaved work could be lost"_s;
    QTest::newRow("another letter case")
        << u"sAFARI"_s << Name(u"Safari"_s) << u"Quit sAFARI — unsaved work could be lost"_s;
}

void SafetyTest::theTargetApplicationIsJudgedToo()
{
    QFETCH(QString, app);
    QFETCH(std::optional<QString>, name);
    QFETCH(QString, asked);
    const auto action = AgentAction::parse(uR"({"action":"quit_app","app":"%1"})"_s.arg(app));
    ActionTarget target;
    target.quitting.emplace().localizedName = name;
    if (name == u"Rechner"_s)
        target.quitting->otherNames.english = u"Calculator"_s;
    QCOMPARE(Safety::assess(*action, target), asked.isEmpty() ? Risk::safe() : Risk::confirm(asked));
}

void SafetyTest::theTargetControlIsJudgedToo_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("found");
    QTest::addColumn<QString>("asked"); // empty if safe

    QTest::newRow("harmless") << u"sav"_s << u"Save As…"_s << QString();
    QTest::newRow("a part of a risky label")
        << u"conf"_s << u"Confirm order"_s << u"Click “conf” (“Confirm order”) in Shop"_s;
    QTest::newRow("both risky") << u"send"_s << u"Delete and send"_s
                                << u"Click “send” (“Delete and send”) in Shop"_s;
    QTest::newRow("the whole label, in another letter case")
        << u"SEND"_s << u"Send"_s << u"Click “SEND” in Shop"_s;
}

void SafetyTest::theTargetControlIsJudgedToo()
{
    QFETCH(QString, label);
    QFETCH(QString, found);
    QFETCH(QString, asked);
    const auto action = AgentAction::parse(uR"({"action":"click","label":"%1"})"_s.arg(label));
    ActionTarget target;
    target.frontmost.emplace().localizedName = u"Shop"_s;
    target.control.emplace().label = found;
    QCOMPARE(Safety::assess(*action, target), asked.isEmpty() ? Risk::safe() : Risk::confirm(asked));
}

void SafetyTest::actionsWithoutARuleAreSafe_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"open_app", "focus_app", "web_search", "new_tab", "type_text", "create_folder", "screenshot",
          "find_files", "open_path", "list_windows", "read_ui", "done", "format_disk", "Trash", ""})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void SafetyTest::actionsWithoutARuleAreSafe()
{
    QFETCH(QString, name);
    const AgentAction action{QUuid::createUuid(), name, {{u"label"_s, u"send"_s}, {u"path"_s, u"/"_s}}};
    QCOMPARE(Safety::assess(action, targetIn(u"Mail"_s)), Risk::safe());
}

void SafetyTest::anUnknownFrontmostApplicationHasNoName()
{
    ActionBench bench;
    RunningApplication nameless = bench.desktop.workspace.start(u"Nameless"_s);
    bench.desktop.workspace.running.first().localizedName.reset();
    bench.desktop.workspace.makeFrontmost(nameless);
    const auto action = AgentAction::parse(uR"({"action":"click","label":"Send"})"_s);
    QCOMPARE(Awaited::result(Safety::assess(*action, bench.services())),
             Risk::confirm(u"Click “Send” in "_s));
}

void SafetyTest::theFrontmostApplicationIsReadAfreshEachTime()
{
    ActionBench bench;
    const auto action = AgentAction::parse(uR"({"action":"press_key","key":"return"})"_s);
    bench.desktop.workspace.makeFrontmost(bench.desktop.workspace.start(u"TextEdit"_s));
    QCOMPARE(Awaited::result(Safety::assess(*action, bench.services())), Risk::safe());
    bench.desktop.workspace.makeFrontmost(bench.desktop.workspace.start(u"Signal"_s));
    QCOMPARE(Awaited::result(Safety::assess(*action, bench.services())),
             Risk::confirm(u"Press Return in Signal — this may send a message"_s));
}

void SafetyTest::aFailingDesktopCountsAsEmpty()
{
    ActionBench bench;
    bench.desktop.journal.failures.insert(RecordedOperation::FrontmostApplication, u"No answer."_s);
    const auto action = AgentAction::parse(uR"({"action":"press_key","key":"q","modifiers":"command"})"_s);
    QCOMPARE(Awaited::result(Safety::assess(*action, bench.services())),
             Risk::confirm(withKeysOfThisPlatform(u"Quit  (⌘Q)"_s)));
}

QTEST_GUILESS_MAIN(SafetyTest)
#include "SafetyTest.moc"
