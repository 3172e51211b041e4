// SPDX-License-Identifier: Apache-2.0
#include "Agent/SystemPrompt.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

// A well-known news website, which the model has seen often in training; stands for any site.
const QString site = u"bbc.com"_s;

// One action and its description, aligned by blanks.
QString action(const QString &json, int blanks, const QString &description)
{
    return json + QString(blanks, u' ') + description;
}

QStringList introduction(const PlatformWords &words)
{
    return {
        words.promptIntroduction,
        u"After each action you receive its result and the current state. "
        "Continue until the task is complete, then emit done."_s,
        {},
    };
}

QStringList actions()
{
    return {
        u"Actions:"_s,
        action(uR"({"action":"open_app","app":"Brave Browser"})"_s, 12, u"launch or focus an app"_s),
        action(uR"({"action":"quit_app","app":"Spotify"})"_s, 19, u"quit an app"_s),
        action(uR"({"action":"open_url","url":")"_s + site + uR"(","app":"Brave Browser"})"_s, 3,
               u"open a website (app optional; opens in a new tab)"_s),
        action(uR"({"action":"web_search","query":"MacBook Air","app":"Safari"})"_s, 2,
               u"Google search (app optional)"_s),
        action(uR"({"action":"new_tab"})"_s, 36, u"open a new tab in the frontmost app"_s),
        action(uR"({"action":"type_text","text":"hello"})"_s, 19, u"type into the focused field"_s),
        action(uR"({"action":"press_key","key":"l","modifiers":"command"})"_s, 2,
               u"press a key (modifiers: command, shift, option, control)"_s),
        action(uR"({"action":"click","label":"Save"})"_s, 23,
               u"press a button/menu item by its label in the frontmost app"_s),
        uR"({"action":"create_folder","name":"Projects","in":"Desktop"})"_s,
        uR"({"action":"screenshot","save_to":"Downloads"})"_s,
        action(uR"({"action":"find_files","folder":"Downloads","extension":"pdf"})"_s, 2,
               u"lists newest first and reveals the newest in Finder"_s),
        action(uR"({"action":"open_path","path":"Downloads"})"_s, 15, u"open a file or folder"_s),
        action(uR"({"action":"trash","path":"Downloads/old.zip"})"_s, 10, u"move to Trash"_s),
        action(uR"({"action":"list_windows"})"_s, 31, u"see open windows"_s),
        action(uR"({"action":"read_ui"})"_s, 36, u"list controls of the frontmost app"_s),
        action(uR"({"action":"applescript","script":"..."})"_s, 17, u"last resort"_s),
        uR"({"action":"done","message":"short summary for the user"})"_s,
        {},
    };
}

QStringList rules()
{
    return {
        u"Rules:"_s,
        u"- Prefer open_url / web_search / open_app over keyboard automation. "
        "Never type URLs manually when open_url works."_s,
        uR"(- Browser app names: "Safari", "Brave Browser", "Google Chrome", "Firefox", "Arc".)"_s,
        u"- Folder names like Desktop, Downloads, Documents work as locations."_s,
        u"- If a step fails, try a different approach once, otherwise emit done explaining the problem."_s,
        u"- When the result shows the task is complete, emit done immediately. "
        "Never repeat a finished action."_s,
        {},
    };
}

QStringList example()
{
    return {
        u"Example"_s,
        u"User: Open Brave and go to "_s + site,
        uR"({"action":"open_url","url":"https://)"_s + site + uR"(","app":"Brave Browser"})"_s,
        u"Result: Opened "_s + site + u" in Brave Browser."_s,
        uR"({"action":"done","message":"Opened )"_s + site + uR"( in Brave."})"_s,
    };
}

} // namespace

const QString &SystemPrompt::text()
{
    static const QString text = textFor(PlatformWords::current());
    return text;
}

QString SystemPrompt::textFor(const PlatformWords &words)
{
    return (introduction(words) + actions() + rules() + example()).join(u'\n');
}
