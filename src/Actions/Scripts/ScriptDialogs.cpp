// SPDX-License-Identifier: Apache-2.0
#include "Actions/Scripts/ScriptDialogs.h"

#include "Base/Text.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptCoercion.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxButtons = 3;
constexpr double maxPatience = 86400.0; // seconds

QString textOf(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"text"_s, {}).as<QString>();
}

// Empty if the parameter is missing.
QString textParameter(const ScriptCommand &command, const QString &label)
{
    return command.parameters.contains(label) ? textOf(command.parameter(label)) : QString();
}

bool isOn(const ScriptCommand &command, const QString &label)
{
    const ScriptValue value = command.parameter(label);
    return value.is<bool>() && value.as<bool>();
}

QList<ScriptValue> listOf(const ScriptValue &value)
{
    return ScriptCoercion::to(value, u"list"_s, {}).items();
}

QStringList textsOf(const ScriptValue &value)
{
    QStringList texts;
    for (const ScriptValue &item : listOf(value))
        texts.append(textOf(item));
    return texts;
}

// The button that a parameter names or counts from 1; nothing without the parameter.
std::optional<int> buttonParameter(const ScriptCommand &command, const QString &label,
                                   const QStringList &buttons)
{
    if (!command.parameters.contains(label))
        return std::nullopt;
    const ScriptValue value = command.parameter(label);
    const qsizetype index = value.is<qint64>() ? value.as<qint64>() - 1 : buttons.indexOf(textOf(value));
    if (index < 0 || index >= buttons.size())
        throw ScriptError(u"The %1 %2 isn't one of the buttons."_s.arg(label, ScriptCoercion::source(value)));
    return static_cast<int>(index);
}

void takeButtons(const ScriptCommand &command, Dialog &dialog)
{
    if (command.parameters.contains(u"buttons"_s))
        dialog.buttons = textsOf(command.parameter(u"buttons"_s));
    if (dialog.buttons.isEmpty() || dialog.buttons.size() > maxButtons)
        throw ScriptError(u"A dialog has one to three buttons."_s);
    const int cancel = static_cast<int>(dialog.buttons.indexOf(u"Cancel"_s));
    dialog.cancelButton = buttonParameter(command, u"cancel button"_s, dialog.buttons).value_or(cancel);
    dialog.defaultButton =
        buttonParameter(command, u"default button"_s, dialog.buttons).value_or(dialog.defaultButton);
}

void takePatience(const ScriptCommand &command, Dialog &dialog)
{
    const ScriptValue value = command.parameter(u"giving up after"_s);
    const double seconds = value.isMissing() ? 0.0 : ScriptCoercion::to(value, u"real"_s, {}).real();
    if (seconds > 0.0)
        dialog.givesUpAfter =
            std::chrono::milliseconds(static_cast<qint64>(std::min(seconds, maxPatience) * 1000.0));
}

Dialog messageDialog(const ScriptCommand &command)
{
    Dialog dialog;
    dialog.text = textOf(command.direct.value_or(ScriptValue()));
    dialog.title = textParameter(command, u"with title"_s);
    const bool hasOwnButtons = command.parameters.contains(u"buttons"_s);
    dialog.buttons = {u"Cancel"_s, u"OK"_s};
    dialog.defaultButton = hasOwnButtons ? Dialog::noButton : 1;
    takeButtons(command, dialog);
    takePatience(command, dialog);
    if (command.parameters.contains(u"default answer"_s))
        dialog.answer = textParameter(command, u"default answer"_s);
    dialog.hidesAnswer = isOn(command, u"hidden answer"_s);
    return dialog;
}

Dialog alert(const ScriptCommand &command)
{
    Dialog dialog;
    dialog.text = textOf(command.direct.value_or(ScriptValue()));
    dialog.message = textParameter(command, u"message"_s);
    dialog.buttons = {u"OK"_s};
    takeButtons(command, dialog);
    if (dialog.defaultButton == Dialog::noButton)
        dialog.defaultButton = static_cast<int>(dialog.buttons.size()) - 1;
    // Only a button that is named as such cancels an alert.
    if (!command.parameters.contains(u"cancel button"_s))
        dialog.cancelButton = Dialog::noButton;
    takePatience(command, dialog);
    return dialog;
}

Dialog listDialog(const ScriptCommand &command)
{
    Dialog dialog;
    dialog.items = textsOf(command.direct.value_or(ScriptValue()));
    dialog.title = textParameter(command, u"with title"_s);
    dialog.text = u"Please make your selection:"_s;
    if (command.parameters.contains(u"with prompt"_s))
        dialog.text = textParameter(command, u"with prompt"_s);
    const QString cancel = textParameter(command, u"cancel button name"_s);
    const QString accept = textParameter(command, u"ok button name"_s);
    dialog.buttons = {cancel.isEmpty() ? u"Cancel"_s : cancel, accept.isEmpty() ? u"OK"_s : accept};
    dialog.cancelButton = 0;
    dialog.defaultButton = 1;
    dialog.takesSeveral = isOn(command, u"multiple selections allowed"_s);
    dialog.takesNone = isOn(command, u"empty selection allowed"_s);
    if (!command.parameters.contains(u"default items"_s))
        return dialog;
    for (const QString &item : textsOf(command.parameter(u"default items"_s))) {
        const int index = static_cast<int>(dialog.items->indexOf(item));
        const bool isAllowed = dialog.takesSeveral || dialog.chosen.isEmpty();
        if (index >= 0 && isAllowed && !dialog.chosen.contains(index))
            dialog.chosen.append(index);
    }
    return dialog;
}

// What the user answered. Throws ScriptError if the dialog was withdrawn.
QCoro::Task<DialogAnswer> answerTo(Dialog dialog, Desktop desktop)
{
    const std::optional<DialogAnswer> answer = co_await desktop.dialogs.ask(dialog);
    if (!answer)
        throw ScriptError(u"User canceled."_s, ScriptError::UserCancelled);
    co_return *answer;
}

QCoro::Task<ScriptValue> askButton(Dialog dialog, Desktop desktop)
{
    const DialogAnswer answer = co_await answerTo(dialog, desktop);
    const bool hasGivenUp = answer.button == Dialog::noButton;
    if (!hasGivenUp && answer.button == dialog.cancelButton)
        throw ScriptError(u"User canceled."_s, ScriptError::UserCancelled);
    const QString button = hasGivenUp ? QString() : dialog.buttons.at(answer.button);
    std::vector<std::pair<QString, ScriptValue>> entries{{u"button returned"_s, button}};
    if (dialog.answer)
        entries.emplace_back(u"text returned"_s, answer.text);
    if (dialog.givesUpAfter)
        entries.emplace_back(u"gave up"_s, hasGivenUp);
    co_return ScriptValue::record(entries);
}

// The chosen items, or false.
QCoro::Task<ScriptValue> askItems(ScriptCommand command, Desktop desktop)
{
    const Dialog dialog = listDialog(command);
    const DialogAnswer answer = co_await answerTo(dialog, desktop);
    if (answer.button == dialog.cancelButton)
        co_return false;
    const QList<ScriptValue> items = listOf(command.direct.value_or(ScriptValue()));
    QList<ScriptValue> chosen;
    for (const int index : answer.chosen)
        chosen.append(items.at(index));
    co_return ScriptValue::list(chosen);
}

} // namespace

QCoro::Task<std::optional<ScriptValue>> ScriptDialogs::perform(ScriptCommand command, Desktop desktop)
{
    std::optional<ScriptValue> answer;
    if (command.name == "display dialog"_L1) {
        const Dialog dialog = messageDialog(command);
        answer = co_await askButton(dialog, desktop);
    } else if (command.name == "display alert"_L1) {
        const Dialog dialog = alert(command);
        answer = co_await askButton(dialog, desktop);
    } else if (command.name == "choose from list"_L1) {
        answer = co_await askItems(command, desktop);
    }
    co_return answer;
}
