// SPDX-License-Identifier: Apache-2.0
#include "Actions/Executor.h"

#include "Actions/Accessibility.h"
#include "Actions/Applications.h"
#include "Actions/Files.h"
#include "Actions/Keyboard.h"
#include "Actions/Locations.h"
#include "Actions/Observation.h"
#include "Actions/Session.h"
#include "Actions/Web.h"
#include "Actions/WebAddress.h"
#include "Base/Text.h"

#include <QHash>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>

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
        throw ActionError(QStringLiteral("Missing %1.").arg(what));
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
    const QString name = required(action, QStringLiteral("app"), QStringLiteral("app name"));
    const QString opened = co_await Executor::launch(name, desktop);
    co_return QStringLiteral("%1 is now frontmost.").arg(opened);
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
    const QString name = required(action, QStringLiteral("app"), QStringLiteral("app name"));
    target.requireFound();
    const bool isRunning = co_await stillRuns(target.quitting, desktop);
    if (!isRunning)
        co_return QStringLiteral("%1 is not running.").arg(name);
    co_await desktop.workspace.terminate(*target.quitting);
    co_await desktop.clock.sleep(quittingTime);
    const bool ended = co_await desktop.workspace.isTerminated(*target.quitting);
    if (ended)
        co_return QStringLiteral("%1 quit.").arg(name);
    co_return QStringLiteral("Asked %1 to quit (it may be waiting on a save prompt).").arg(name);
}

QCoro::Task<QString> openURL(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString url = required(action, QStringLiteral("url"), QStringLiteral("url"));
    co_return co_await Executor::openURL(url, action.arg(QStringLiteral("app")), desktop);
}

QCoro::Task<QString> webSearch(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString query = required(action, QStringLiteral("query"), QStringLiteral("query"));
    const QString address = Executor::searchAddress(query);
    co_return co_await Executor::openURL(address, action.arg(QStringLiteral("app")), desktop);
}

QCoro::Task<QString> newTab(AgentAction action, ActionTarget target, Desktop desktop)
{
    const std::optional<QString> name = action.arg(QStringLiteral("app"));
    const QString key = QStringLiteral("t");
    const QStringList modifiers{QStringLiteral("command")};
    if (name) {
        co_await Executor::launch(*name, desktop);
        co_await Executor::keystroke(key, modifiers, desktop);
    } else {
        target.requireFound();
        co_await Executor::keystroke(key, modifiers, target.frontmost, desktop);
    }
    co_return QStringLiteral("Opened a new tab.");
}

QCoro::Task<QString> typeText(AgentAction action, ActionTarget target, Desktop desktop)
{
    // The raw value: blanks are text too.
    const QString text = action.args.value(QStringLiteral("text"));
    if (text.isEmpty())
        throw ActionError(QStringLiteral("Missing text."));
    target.requireFound();
    co_await Executor::typeText(text, target.frontmost, desktop);
    co_return QStringLiteral("Typed text.");
}

QCoro::Task<QString> pressKey(AgentAction action, ActionTarget target, Desktop desktop)
{
    static const QRegularExpression separators(QStringLiteral("[+, ]"));
    const QString key = required(action, QStringLiteral("key"), QStringLiteral("key"));
    const QString held = action.arg(QStringLiteral("modifiers")).value_or(QString());
    const QStringList modifiers = held.toLower().split(separators, Qt::SkipEmptyParts);
    target.requireFound();
    co_await Executor::keystroke(key, modifiers, target.frontmost, desktop);
    co_return QStringLiteral("Pressed %1.").arg(key);
}

QCoro::Task<QString> click(AgentAction action, ActionTarget target, Desktop desktop)
{
    const QString label = required(action, QStringLiteral("label"), QStringLiteral("label"));
    co_return co_await Executor::press(label, target, desktop);
}

QCoro::Task<QString> createFolder(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString name = required(action, QStringLiteral("name"), QStringLiteral("folder name"));
    const QString location =
        firstOf(action, QStringLiteral("in"), QStringLiteral("location"), QStringLiteral("Desktop"));
    const QString parent = co_await Executor::locate(location, desktop);
    const QString path = Executor::pathInside(parent, name);
    co_await desktop.files.createDirectory(path);
    co_await desktop.workspace.reveal(path);
    co_return QStringLiteral("Created folder at %1.").arg(path);
}

QCoro::Task<QString> screenshot(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder =
        firstOf(action, QStringLiteral("save_to"), QStringLiteral("folder"), QStringLiteral("Downloads"));
    // In the digits of the user's language.
    const QString time = QLocale().toString(desktop.clock.now(), QStringLiteral("yyyy-MM-dd 'at' HH.mm.ss"));
    const QString parent = co_await Executor::locate(folder, desktop);
    const QString path = Executor::pathInside(parent, QStringLiteral("Screenshot %1.png").arg(time));
    co_await Executor::screenshot(path, desktop);
    co_return QStringLiteral("Saved screenshot to %1.").arg(path);
}

QCoro::Task<QString> findFiles(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString folder = action.arg(QStringLiteral("folder")).value_or(QStringLiteral("Downloads"));
    std::optional<QString> extension = action.arg(QStringLiteral("extension"));
    if (!extension)
        extension = action.arg(QStringLiteral("type"));
    co_return co_await Executor::findFiles(folder, extension, action.arg(QStringLiteral("query")), desktop);
}

QCoro::Task<QString> openPath(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = required(action, QStringLiteral("path"), QStringLiteral("path"));
    const QString path = co_await Executor::locate(text, desktop);
    const bool exists = co_await desktop.files.exists(path);
    if (!exists)
        throw ActionError(QStringLiteral("Nothing exists at %1.").arg(text));
    // Whether an application took it is not told: the next observation shows it.
    const QUrl location = QUrl::fromLocalFile(path);
    co_await desktop.workspace.open(location);
    co_return QStringLiteral("Opened %1.").arg(Executor::lastComponent(path));
}

QCoro::Task<QString> trash(AgentAction action, ActionTarget, Desktop desktop)
{
    const QString text = required(action, QStringLiteral("path"), QStringLiteral("path"));
    const QString path = co_await Executor::locate(text, desktop);
    co_await desktop.files.trash(path);
    co_return QStringLiteral("Moved %1 to the Trash.").arg(Executor::lastComponent(path));
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
    const QString source = required(action, QStringLiteral("script"), QStringLiteral("script"));
    co_return co_await Executor::appleScript(source, desktop);
}

const QHash<QString, Handler> &handlers()
{
    static const QHash<QString, Handler> table{
        {QStringLiteral("open_app"), openApp},
        {QStringLiteral("focus_app"), openApp},
        {QStringLiteral("quit_app"), quitApp},
        {QStringLiteral("open_url"), openURL},
        {QStringLiteral("web_search"), webSearch},
        {QStringLiteral("new_tab"), newTab},
        {QStringLiteral("type_text"), typeText},
        {QStringLiteral("press_key"), pressKey},
        {QStringLiteral("click"), click},
        {QStringLiteral("create_folder"), createFolder},
        {QStringLiteral("screenshot"), screenshot},
        {QStringLiteral("find_files"), findFiles},
        {QStringLiteral("open_path"), openPath},
        {QStringLiteral("trash"), trash},
        {QStringLiteral("list_windows"), listWindows},
        {QStringLiteral("read_ui"), readUI},
        {QStringLiteral("applescript"), appleScript},
    };
    return table;
}

} // namespace

QCoro::Task<QString> Executor::run(AgentAction action, Desktop desktop)
{
    const ActionTarget found = co_await target(action, desktop);
    co_return co_await run(action, found, desktop);
}

QCoro::Task<QString> Executor::run(AgentAction action, ActionTarget target, Desktop desktop)
{
    const Handler handler = handlers().value(action.name, nullptr);
    if (!handler)
        throw ActionError(QStringLiteral("Unknown action “%1”.").arg(action.name));
    co_await requireSessionFor(action.name, desktop);
    const QString line = co_await handler(action, target, desktop);
    // Paths, file names and the model's own words may hold anything; the result is one harmless line.
    co_return Text::cleaned(line);
}

bool Executor::actsOnFrontmostApplication(const AgentAction &action)
{
    static const QSet<QString> names{QStringLiteral("press_key"), QStringLiteral("type_text"),
                                     QStringLiteral("click"), QStringLiteral("read_ui")};
    // A new tab in a named application brings that application forward itself.
    const bool isBareNewTab = action.name == QLatin1String("new_tab") && !action.arg(QStringLiteral("app"));
    return isBareNewTab || names.contains(action.name);
}

QCoro::Task<void> Executor::returnTo(RunningApplication application, Desktop desktop)
{
    co_await requireUnlocked(desktop);
    const bool isGone = co_await desktop.workspace.isTerminated(application);
    if (isGone)
        throw ActionError(
            QStringLiteral("“%1” is no longer open, so nothing was done.").arg(application.shownName()));
    co_await desktop.workspace.activate(application);
}
