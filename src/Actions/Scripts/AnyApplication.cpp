// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/AnyApplication.h"

#include "Actions/ActionError.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/Browsing.h"
#include "Actions/Operations/FileSearch.h"
#include "Actions/Operations/Keys.h"
#include "Actions/SessionGate.h"
#include "Scripting/ScriptError.h"

#include <QUrl>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// The time an application has to quit before the script goes on.
constexpr auto quittingTime = 600ms;

QCoro::Task<void> quit(QString name, Desktop desktop)
{
    const std::optional<RunningApplication> application = co_await Applications::running(name, desktop);
    if (!application)
        co_return;
    co_await desktop.workspace.terminate(*application);
    co_await desktop.clock.sleep(quittingTime);
}

bool isWebAddress(const QString &text)
{
    return text.startsWith("http://"_L1) || text.startsWith("https://"_L1);
}

QCoro::Task<void> openOne(QString text, QString name, Desktop desktop)
{
    if (isWebAddress(text)) {
        co_await Browsing::openURL(text, name, desktop);
        co_return;
    }
    const QString path = co_await FileSearch::locate(text, desktop);
    const bool exists = co_await desktop.files.exists(path);
    if (!exists)
        throw ScriptError(u"Nothing exists at %1."_s.arg(text), ScriptError::NoSuchObject);
    const ApplicationBundle application = co_await Applications::foundApplication(name, desktop);
    const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    co_await desktop.workspace.open(url, application);
}

// Files and web addresses: one, or a list.
QCoro::Task<void> open(ScriptValue what, QString name, Desktop desktop)
{
    const QList<ScriptValue> items = ScriptCoercion::to(what, u"list"_s, {}).items();
    for (const ScriptValue &item : items) {
        const QString text = ScriptItems::textOf(item);
        co_await openOne(text, name, desktop);
    }
}

// `make new tab [with properties {URL:…}]`; nothing if something else is to be made.
QCoro::Task<std::optional<ScriptValue>> make(ScriptCommand command, QString name, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    const QString what = ScriptCoercion::text(command.parameter(u"new"_s), {}).value_or(QString());
    // "tab" is also a character.
    if (what != u"tab" && what != u"\t")
        co_return answer;
    const ScriptValue properties = command.parameter(u"with properties"_s);
    const bool hasProperties = properties.is<ScriptValue::Record>();
    const ScriptValue *url = hasProperties ? properties.as<ScriptValue::Record>()->find(u"url"_s) : nullptr;
    if (url) {
        const QString address = ScriptItems::textOf(*url);
        co_await Browsing::openURL(address, name, desktop);
    } else {
        const QString key = u"t"_s;
        const QStringList modifiers{u"command"_s};
        co_await AnyApplication::bringForward(name, desktop);
        co_await Keys::keystroke(key, modifiers, desktop);
    }
    answer = ScriptValue();
    co_return answer;
}

QCoro::Task<std::optional<ScriptValue>> property(QString property, QString name, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    if (property == "name"_L1)
        answer = ScriptValue(name);
    const std::optional<RunningApplication> running = co_await Applications::running(name, desktop);
    if (property == "running"_L1)
        answer = ScriptValue(running.has_value());
    if (property == "frontmost"_L1) {
        const std::optional<RunningApplication> frontmost = co_await desktop.workspace.frontmostApplication();
        answer = ScriptValue(running && frontmost && frontmost->isPartOf(*running));
    }
    co_return answer;
}

QCoro::Task<std::optional<QList<ScriptItem>>> windows(ScriptValue::Object element, Desktop desktop)
{
    std::optional<QList<ScriptItem>> items;
    const bool isWindow = element->name == u"window" || element->name == u"document";
    if (isWindow && ScriptItems::isApplication(*element->container)) {
        const QString application = element->container->name;
        items = co_await AnyApplication::windowsOf(application, desktop);
    }
    co_return items;
}

bool isPropertyOfApplication(const ScriptValue::Object &object)
{
    return object && object->kind == ScriptObject::Kind::Property &&
           ScriptItems::isApplication(*object->container);
}

QCoro::Task<std::optional<ScriptValue>> getOrSet(ScriptCommand command, QString name, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    if (!isPropertyOfApplication(object))
        co_return co_await ScriptItems::perform(command, &windows, desktop);
    if (command.name == "get"_L1)
        co_return co_await property(object->name, name, desktop);
    const bool isForward = command.name == "set"_L1 && object->name == u"frontmost";
    if (isForward) {
        co_await AnyApplication::bringForward(name, desktop);
        answer = ScriptValue();
    }
    co_return answer;
}

} // namespace

QCoro::Task<QList<ScriptItem>> AnyApplication::windowsOf(QString name, Desktop desktop)
{
    QList<ScriptItem> items;
    const std::optional<RunningApplication> application = co_await Applications::running(name, desktop);
    if (!application)
        co_return items;
    const WorkspaceSnapshot snapshot = co_await desktop.workspace.snapshot();
    for (const WindowDescription &window : snapshot.windows) {
        if (window.ownerProcessIdentifier != application->processIdentifier || window.layer != 0)
            continue;
        const ScriptValue index = qint64(items.size() + 1);
        items.append({window.name.value_or(QString()), {{u"index"_s, index}, {u"visible"_s, true}}});
    }
    co_return items;
}

QCoro::Task<void> AnyApplication::bringForward(QString name, Desktop desktop)
{
    co_await SessionGate::requireUnlocked(desktop);
    co_await Applications::launch(name, desktop);
}

QCoro::Task<std::optional<ScriptValue>> AnyApplication::perform(ScriptCommand command, Desktop desktop)
{
    const QString name = *command.application;
    std::optional<ScriptValue> done = ScriptValue();
    const bool isForward = command.name == "activate"_L1 || command.name == "launch"_L1 ||
                           command.name == "run"_L1 || command.name == "reopen"_L1;
    if (isForward)
        co_await bringForward(name, desktop);
    else if (command.name == "quit"_L1)
        co_await quit(name, desktop);
    else if (command.name == "open"_L1 && command.direct)
        co_await open(*command.direct, name, desktop);
    else if (command.name == "make"_L1)
        done = co_await make(command, name, desktop);
    else
        done = co_await getOrSet(command, name, desktop);
    co_return done;
}
