// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/Clipboard.h"

#include "Scripting/Values/ScriptCoercion.h"

using namespace Qt::StringLiterals;

QCoro::Task<std::optional<ScriptValue>> Clipboard::perform(ScriptCommand command)
{
    std::optional<ScriptValue> answer;
    if (command.name == "the clipboard"_L1) {
        const std::optional<QString> text = co_await m_text.read();
        answer = ScriptValue(text.value_or(QString()));
    } else if (command.name == "set the clipboard to"_L1) {
        const ScriptValue wanted = command.direct.value_or(ScriptValue());
        const QString text = ScriptCoercion::to(wanted, u"text"_s, {}).as<QString>();
        co_await m_text.write(text);
        answer = ScriptValue();
    }
    co_return answer;
}
