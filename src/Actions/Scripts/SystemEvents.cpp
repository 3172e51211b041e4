// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/SystemEvents.h"

#include "Actions/Operations/Applications.h"
#include "Actions/Operations/Keys.h"
#include "Actions/Scripts/AnyApplication.h"
#include "Actions/Scripts/ScriptControls.h"
#include "Actions/Scripts/ScriptItems.h"
#include "Actions/SessionGate.h"
#include "Base/Text.h"
#include "Scripting/ScriptError.h"

using namespace Qt::StringLiterals;

namespace {

bool isProcess(const QString &className)
{
    return className == "process"_L1 || className == "application process"_L1;
}

// "command down" or a list of such constants.
QStringList modifiersOf(const ScriptCommand &command)
{
    QStringList names;
    const ScriptValue held = command.parameter(u"using"_s);
    if (held.isMissing())
        return names;
    const QList<ScriptValue> items = ScriptCoercion::to(held, u"list"_s, {}).items();
    for (const ScriptValue &item : items) {
        const QString name = ScriptItems::textOf(item);
        if (!name.endsWith(" down"_L1))
            throw ScriptError(u"“%1” is no modifier key."_s.arg(name));
        names.append(name.chopped(5));
    }
    return names;
}

QString keyName(const QString &character)
{
    static const QHash<QString, QString> names{
        {u"\r"_s, u"return"_s}, {u"\n"_s, u"return"_s}, {u"\t"_s, u"tab"_s}, {u" "_s, u"space"_s}};
    return names.value(character, character);
}

QCoro::Task<void> keystroke(ScriptCommand command, Desktop desktop)
{
    const ScriptValue direct = command.direct.value_or(ScriptValue());
    QString text = ScriptItems::textOf(direct);
    const QStringList modifiers = modifiersOf(command);
    const std::optional<RunningApplication> receiver = co_await desktop.workspace.frontmostApplication();
    if (modifiers.isEmpty()) {
        co_await Keys::typeText(text.replace(u'\r', u'\n'), receiver, desktop);
        co_return;
    }
    const QStringList characters = Text::chunked(text, 1);
    for (const QString &character : characters) {
        const QString key = keyName(character);
        co_await Keys::keystroke(key, modifiers, receiver, desktop);
    }
}

QCoro::Task<void> keyCode(ScriptCommand command, Desktop desktop)
{
    const ScriptValue direct = command.direct.value_or(ScriptValue());
    const QList<ScriptValue> codes = ScriptCoercion::to(direct, u"list"_s, {}).items();
    const QStringList modifiers = modifiersOf(command);
    const std::optional<RunningApplication> receiver = co_await desktop.workspace.frontmostApplication();
    for (const ScriptValue &code : codes) {
        const qint64 number = ScriptCoercion::to(code, u"integer"_s, {}).as<qint64>();
        const QString key = Keys::keyCodes().key(static_cast<std::uint16_t>(number));
        if (number < 0 || number > 0xFFFF || key.isEmpty())
            throw ScriptError(u"There is no key with the code %1."_s.arg(number));
        co_await Keys::keystroke(key, modifiers, receiver, desktop);
    }
}

QCoro::Task<QList<ScriptItem>> processes(Desktop desktop)
{
    const QList<RunningApplication> applications = co_await desktop.workspace.runningApplications();
    const std::optional<RunningApplication> frontmost = co_await desktop.workspace.frontmostApplication();
    QList<ScriptItem> items;
    for (const RunningApplication &application : applications) {
        const bool isFrontmost = frontmost && frontmost->isPartOf(application);
        if (!application.localizedName)
            continue;
        items.append({*application.localizedName,
                      {{u"frontmost"_s, isFrontmost},
                       {u"visible"_s, application.isRegular},
                       {u"background only"_s, !application.isRegular},
                       {u"unix id"_s, qint64(application.processIdentifier)}}});
    }
    co_return items;
}

// The processes, or the windows of one.
QCoro::Task<std::optional<QList<ScriptItem>>> items(ScriptValue::Object element, Desktop desktop)
{
    std::optional<QList<ScriptItem>> found;
    const ScriptObject &container = *element->container;
    if (isProcess(element->name) && ScriptItems::isApplication(container)) {
        found = co_await processes(desktop);
    } else if (element->name == u"window" && isProcess(container.name)) {
        const QList<ScriptItem> all = co_await processes(desktop);
        const QList<ScriptItem> owners = ScriptItems::selected(container, all);
        const QString owner = owners.isEmpty() ? QString() : owners.first().name;
        found = co_await AnyApplication::windowsOf(owner, desktop);
    }
    co_return found;
}

// `set frontmost of process "X" to true`; nothing for other properties.
QCoro::Task<std::optional<ScriptValue>> set(ScriptCommand command, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    const bool isFrontmost = object && object->kind == ScriptObject::Kind::Property &&
                             object->name == u"frontmost" && isProcess(object->container->name);
    if (!isFrontmost)
        co_return answer;
    const QList<ScriptItem> all = co_await processes(desktop);
    const QList<ScriptItem> chosen = ScriptItems::selected(*object->container, all);
    const QString name = chosen.isEmpty() ? QString() : chosen.first().name;
    const std::optional<RunningApplication> application = co_await Applications::running(name, desktop);
    if (!application)
        throw ScriptError(u"Can’t get %1."_s.arg(ScriptCoercion::source(object->container)),
                          ScriptError::NoSuchObject);
    co_await Applications::returnTo(*application, desktop);
    answer = ScriptValue();
    co_return answer;
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> SystemEvents::perform(ScriptCommand command, Desktop desktop)
{
    std::optional<ScriptValue> done = ScriptValue();
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    const bool isKey = command.name == "keystroke"_L1 || command.name == "key code"_L1;
    const bool isPress = object && (command.name == "click"_L1 || command.name == "select"_L1);
    // The screen may have been locked since the script began.
    if (isKey || isPress)
        co_await SessionGate::requireUnlocked(desktop);
    if (command.name == "keystroke"_L1)
        co_await keystroke(command, desktop);
    else if (command.name == "key code"_L1)
        co_await keyCode(command, desktop);
    else if (isPress)
        co_await ScriptControls::press(object, desktop);
    else if (command.name == "set"_L1)
        done = co_await set(command, desktop);
    else
        done = co_await ScriptItems::perform(command, &items, desktop);
    co_return done;
}
