// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/KeyboardActions.h"

#include "Actions/ActionError.h"
#include "Actions/Arguments.h"
#include "Actions/Operations/Keys.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QCoro::Task<QString> runTypeText(AgentAction action, ActionTarget target, Desktop desktop)
{
    // Untrimmed: blanks are text too.
    const QString text = action.args.value(u"text"_s);
    if (text.isEmpty())
        throw ActionError(u"Missing text."_s);
    target.requireFound();
    co_await Keys::typeText(text, target.frontmost, desktop);
    co_return u"Typed text."_s;
}

QString typeTextTitle(const AgentAction &action)
{
    return u"Typing “%1”"_s.arg(Arguments::shown(action, u"text"_s));
}

QCoro::Task<QString> runPressKey(AgentAction action, ActionTarget target, Desktop desktop)
{
    static const QRegularExpression separators(u"[+, ]"_s);
    const QString key = Arguments::required(action, u"key"_s, u"key"_s);
    const QString held = action.arg(u"modifiers"_s).value_or(QString());
    const QStringList modifiers = held.toLower().split(separators, Qt::SkipEmptyParts);
    target.requireFound();
    co_await Keys::keystroke(key, modifiers, target.frontmost, desktop);
    co_return u"Pressed %1."_s.arg(key);
}

QString pressKeyTitle(const AgentAction &action)
{
    const std::optional<QString> modifiers = action.arg(u"modifiers"_s);
    const QString held = modifiers ? *modifiers + u'+' : QString();
    return u"Pressing "_s + held + Arguments::shown(action, u"key"_s);
}

} // namespace

constinit const ActionDefinition KeyboardActions::typeText{
    .name = u"type_text",
    .title = &typeTextTitle,
    .run = &runTypeText,
    .focus = ActionDefinition::Focus::Needed,
};

constinit const ActionDefinition KeyboardActions::pressKey{
    .name = u"press_key",
    .title = &pressKeyTitle,
    .run = &runPressKey,
    .focus = ActionDefinition::Focus::Needed,
};
