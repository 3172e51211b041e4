// SPDX-License-Identifier: Apache-2.0
#include "Actions/Families/KeyboardActions.h"

#include "Actions/ActionError.h"
#include "Actions/Arguments.h"
#include "Actions/Operations/Keyboard.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

QCoro::Task<QString> KeyboardActions::typeText(AgentAction action, ActionTarget target, Desktop desktop)
{
    // The raw value: blanks are text too.
    const QString text = action.args.value(u"text"_s);
    if (text.isEmpty())
        throw ActionError(u"Missing text."_s);
    target.requireFound();
    co_await Executor::typeText(text, target.frontmost, desktop);
    co_return u"Typed text."_s;
}

QString KeyboardActions::typeTextTitle(const AgentAction &action)
{
    return u"Typing “%1”"_s.arg(Arguments::shown(action, u"text"_s));
}

QCoro::Task<QString> KeyboardActions::pressKey(AgentAction action, ActionTarget target, Desktop desktop)
{
    static const QRegularExpression separators(u"[+, ]"_s);
    const QString key = Arguments::required(action, u"key"_s, u"key"_s);
    const QString held = action.arg(u"modifiers"_s).value_or(QString());
    const QStringList modifiers = held.toLower().split(separators, Qt::SkipEmptyParts);
    target.requireFound();
    co_await Executor::keystroke(key, modifiers, target.frontmost, desktop);
    co_return u"Pressed %1."_s.arg(key);
}

QString KeyboardActions::pressKeyTitle(const AgentAction &action)
{
    const std::optional<QString> modifiers = action.arg(u"modifiers"_s);
    const QString held = modifiers ? *modifiers + u'+' : QString();
    return u"Pressing "_s + held + Arguments::shown(action, u"key"_s);
}
