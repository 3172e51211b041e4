// SPDX-License-Identifier: Apache-2.0
#include "Actions/Executor.h"

#include "Actions/Accessibility.h"
#include "Actions/ActionKind.h"
#include "Actions/Applications.h"
#include "Actions/Files.h"
#include "Actions/Keyboard.h"
#include "Actions/Locations.h"
#include "Actions/Observation.h"
#include "Actions/Session.h"
#include "Actions/Web.h"
#include "Actions/WebAddress.h"
#include "Base/Text.h"

#include <QLocale>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

using Handler = QCoro::Task<QString> (*)(AgentAction action, ActionTarget target, Desktop desktop);

// How long a polite request to quit is given before it is looked at.
constexpr auto quittingTime = 600ms;

// The argument, or the failure that says what is missing ("Missing app name.").
QString required(const AgentAction &action, const QString &key, const QString &what)
{
    const std::optional<QString> value = action.arg(key);
    if (!value)
        throw ActionError(u"Missing %1."_s.arg(what));
    return *value;
}

// The first of the arguments that is there, else the fallback.
QString firstOf(const AgentAction &action, const QString &key, const QString &otherKey,
                const QString &fallback)
{
    return action.arg(key).value_or(action.arg(otherKey).value_or(fallback));
}

QCoro::Task<QString> openApp(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString name = required(action, u"app"_s, u"app name"_s);
    const QString opened = co_await Executor::launch(name, desktop);
    co_return u"%1 is now frontmost."_s.arg(opened);
}

QCoro::Task<bool> stillRuns(std::optional<RunningApplication> application, Desktop desktop)
{
    if (!application)
        co_return false;
    const bool hasEnded = co_await desktop.workspace.isTerminated(*application);
    co_return !hasEnded;
}

QCoro::Task<QString> quitApp(AgentAction action, ActionTarget target, Desktop desktop)
{
    const QString name = required(action, u"app"_s, u"app name"_s);
    target.requireFound();
    const bool isRunning = co_await stillRuns(target.quitting, desktop);
    if (!isRunning)
        co_return u"%1 is not running."_s.arg(name);
    co_await desktop.workspace.terminate(*target.quitting);
    co_await desktop.clock.sleep(quittingTime);
    const bool ended = co_await desktop.workspace.isTerminated(*target.quitting);
    if (ended)
        co_return u"%1 quit."_s.arg(name);
    co_return u"Asked %1 to quit (it may be waiting on a save prompt)."_s.arg(name);
}

QCoro::Task<QString> openURL(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString url = required(action, u"url"_s, u"url"_s);
    co_return co_await Executor::openURL(url, action.arg(u"app"_s), desktop);
}

QCoro::Task<QString> webSearch(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString query = required(action, u"query"_s, u"query"_s);
    const QString address = Executor::searchAddress(query);
    co_return co_await Executor::openURL(address, action.arg(u"app"_s), desktop);
}

QCoro::Task<QString> newTab(AgentAction action, ActionTarget target, Desktop desktop)
{
    const std::optional<QString> name = action.arg(u"app"_s);
    const QString key = u"t"_s;
    const QStringList modifiers{u"command"_s};
    if (name) {
        co_await Executor::launch(*name, desktop);
        co_await Executor::keystroke(key, modifiers, desktop);
    } else {
        target.requireFound();
        co_await Executor::keystroke(key, modifiers, target.frontmost, desktop);
    }
    co_return u"Opened a new tab."_s;
}

QCoro::Task<QString> typeText(AgentAction action, ActionTarget target, Desktop desktop)
{
    // The raw value: blanks are text too.
    const QString text = action.args.value(u"text"_s);
    if (text.isEmpty())
        throw ActionError(u"Missing text."_s);
    target.requireFound();
    co_await Executor::typeText(text, target.frontmost, desktop);
    co_return u"Typed text."_s;
}

QCoro::Task<QString> pressKey(AgentAction action, ActionTarget target, Desktop desktop)
{
    static const QRegularExpression separators(u"[+, ]"_s);
    const QString key = required(action, u"key"_s, u"key"_s);
    const QString held = action.arg(u"modifiers"_s).value_or(QString());
    const QStringList modifiers = held.toLower().split(separators, Qt::SkipEmptyParts);
    target.requireFound();
    co_await Executor::keystroke(key, modifiers, target.frontmost, desktop);
    co_return u"Pressed %1."_s.arg(key);
}

QCoro::Task<QString> click(AgentAction action, ActionTarget target, Desktop desktop)
{
    const QString label = required(action, u"label"_s, u"label"_s);
    co_return co_await Executor::press(label, target, desktop);
}

QCoro::Task<QString> createFolder(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString name = required(action, u"name"_s, u"folder name"_s);
    const QString location = firstOf(action, u"in"_s, u"location"_s, u"Desktop"_s);
    const QString parent = co_await Executor::locate(location, desktop);
    const QString path = Executor::pathInside(parent, name);
    co_await desktop.files.createDirectory(path);
    co_await desktop.workspace.reveal(path);
    co_return u"Created folder at %1."_s.arg(path);
}

QCoro::Task<QString> screenshot(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = firstOf(action, u"save_to"_s, u"folder"_s, u"Downloads"_s);
    // In the digits of the user's language.
    const QString time = QLocale().toString(desktop.clock.now(), u"yyyy-MM-dd 'at' HH.mm.ss"_s);
    const QString parent = co_await Executor::locate(folder, desktop);
    const QString path = Executor::pathInside(parent, u"Screenshot %1.png"_s.arg(time));
    co_await Executor::screenshot(path, desktop);
    co_return u"Saved screenshot to %1."_s.arg(path);
}

QCoro::Task<QString> findFiles(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = action.arg(u"folder"_s).value_or(u"Downloads"_s);
    std::optional<QString> extension = action.arg(u"extension"_s);
    if (!extension)
        extension = action.arg(u"type"_s);
    co_return co_await Executor::findFiles(folder, extension, action.arg(u"query"_s), desktop);
}

QCoro::Task<QString> openPath(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = required(action, u"path"_s, u"path"_s);
    const QString path = co_await Executor::locate(text, desktop);
    const bool exists = co_await desktop.files.exists(path);
    if (!exists)
        throw ActionError(u"Nothing exists at %1."_s.arg(text));
    // Whether an application took it is not told: the next observation shows it.
    const QUrl location = QUrl::fromLocalFile(path);
    co_await desktop.workspace.open(location);
    co_return u"Opened %1."_s.arg(Executor::lastComponent(path));
}

QCoro::Task<QString> trash(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = required(action, u"path"_s, u"path"_s);
    const QString path = co_await Executor::locate(text, desktop);
    co_await desktop.files.trash(path);
    co_return u"Moved %1 to the Trash."_s.arg(Executor::lastComponent(path));
}

QCoro::Task<QString> listWindows(AgentAction, ActionTarget, Desktop desktop)
{
    co_return co_await Executor::windowSummary(desktop);
}

QCoro::Task<QString> readUI(AgentAction, ActionTarget, Desktop desktop)
{
    co_return co_await Executor::readUI(desktop);
}

QCoro::Task<QString> appleScript(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString source = required(action, u"script"_s, u"script"_s);
    co_return co_await Executor::appleScript(source, desktop);
}

// None for what is not carried out on the desktop.
Handler handlerOf(ActionKind kind)
{
    switch (kind) {
    case ActionKind::OpenApp:
    case ActionKind::FocusApp:
        return openApp;
    case ActionKind::QuitApp:
        return quitApp;
    case ActionKind::OpenUrl:
        return openURL;
    case ActionKind::WebSearch:
        return webSearch;
    case ActionKind::NewTab:
        return newTab;
    case ActionKind::TypeText:
        return typeText;
    case ActionKind::PressKey:
        return pressKey;
    case ActionKind::Click:
        return click;
    case ActionKind::CreateFolder:
        return createFolder;
    case ActionKind::Screenshot:
        return screenshot;
    case ActionKind::FindFiles:
        return findFiles;
    case ActionKind::OpenPath:
        return openPath;
    case ActionKind::Trash:
        return trash;
    case ActionKind::ListWindows:
        return listWindows;
    case ActionKind::ReadUi:
        return readUI;
    case ActionKind::AppleScript:
        return appleScript;
    case ActionKind::Done:
        return nullptr;
    }
    Q_UNREACHABLE();
}

} // namespace

QCoro::Task<QString> Executor::run(AgentAction action, Desktop desktop)
{
    const ActionTarget found = co_await target(action, desktop);
    co_return co_await run(action, found, desktop);
}

QCoro::Task<QString> Executor::run(AgentAction action, ActionTarget target, Desktop desktop)
{
    const std::optional<ActionKind> kind = kindOf(action);
    const Handler handler = kind ? handlerOf(*kind) : nullptr;
    if (!handler)
        throw ActionError(u"Unknown action “%1”."_s.arg(action.name));
    co_await requireSessionFor(action, desktop);
    const QString line = co_await handler(action, target, desktop);
    // Paths, file names and the model's own words may hold anything; the result is one harmless line.
    co_return Text::cleaned(line);
}

bool Executor::actsOnFrontmostApplication(const AgentAction &action)
{
    const std::optional<ActionKind> kind = kindOf(action);
    if (!kind)
        return false;
    switch (*kind) {
    case ActionKind::TypeText:
    case ActionKind::PressKey:
    case ActionKind::Click:
    case ActionKind::ReadUi:
        return true;
    case ActionKind::NewTab:
        // One in a named application brings that application forward itself.
        return !action.arg(u"app"_s);
    case ActionKind::OpenApp:
    case ActionKind::FocusApp:
    case ActionKind::QuitApp:
    case ActionKind::OpenUrl:
    case ActionKind::WebSearch:
    case ActionKind::CreateFolder:
    case ActionKind::Screenshot:
    case ActionKind::FindFiles:
    case ActionKind::OpenPath:
    case ActionKind::Trash:
    case ActionKind::ListWindows:
    case ActionKind::AppleScript:
    case ActionKind::Done:
        return false;
    }
    Q_UNREACHABLE();
}

QCoro::Task<void> Executor::returnTo(RunningApplication application, Desktop desktop)
{
    co_await requireUnlocked(desktop);
    const bool isGone = co_await desktop.workspace.isTerminated(application);
    if (isGone)
        throw ActionError(u"“%1” is no longer open, so nothing was done."_s.arg(application.shownName()));
    co_await desktop.workspace.activate(application);
}
