// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/BrowserPages.h"

#include "Actions/Operations/Applications.h"
#include "Actions/Scripts/ScriptItems.h"
#include "Actions/Trust.h"
#include "Base/PlatformWords.h"
#include "Scripting/ScriptError.h"

using namespace Qt::StringLiterals;

namespace {

bool isFront(const ScriptObject &object, const QString &className)
{
    return object.kind == ScriptObject::Kind::Element && object.name == className &&
           object.form == ScriptObject::Form::Index && object.key.is<qint64>() &&
           object.key.as<qint64>() == 1;
}

// The document in front, or the front window's tab.
bool isPage(const ScriptObject &object)
{
    const bool isTab = object.kind == ScriptObject::Kind::Property &&
                       (object.name == u"active tab" || object.name == u"current tab");
    return isFront(object, u"document"_s) ||
           (isTab && object.container && isFront(*object.container, u"window"_s));
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> BrowserPages::perform(ScriptCommand command, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    const ScriptValue::Object object = ScriptItems::objectOf(command);
    const bool isAddress = object && object->kind == ScriptObject::Kind::Property && object->name == u"url" &&
                           object->container && isPage(*object->container);
    if (!isAddress || command.name != u"get")
        co_return answer;
    const QString name = *command.application;
    co_await Trust::requireTrust(PlatformWords::current().controlsRefusal, desktop);
    const std::optional<RunningApplication> browser = co_await Applications::running(name, desktop);
    if (!browser)
        throw ScriptError(u"“%1” is not running."_s.arg(name), ScriptError::NoSuchObject);
    const std::shared_ptr<AccessibilityTree> tree = co_await desktop.accessibility.applicationTree(*browser);
    const std::optional<QString> address = co_await tree->pageAddress();
    if (!address)
        throw ScriptError(u"“%1” doesn't tell the address of its page."_s.arg(name),
                          ScriptError::NoSuchObject);
    answer = ScriptValue(*address);
    co_return answer;
}
