// SPDX-License-Identifier: Apache-2.0
// Any script ends with a result or an error, whatever it gets as answers.
#include "Fuzzing.h"

#include "Scripting/Language/ScriptParser.h"
#include "Scripting/Machine/ScriptCompiler.h"
#include "Scripting/Machine/ScriptMachine.h"
#include "Scripting/ScriptError.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostPieces = 20;

void answer(ScriptMachine &machine, int number)
{
    if (number % 3 == 0)
        machine.fail(ScriptError(u"No."_s));
    else if (number % 3 == 1)
        machine.answer(ScriptValue::list({u"a b"_s, qint64(2), ScriptObject::application(u"X"_s)}));
    else
        machine.answer(u"text"_s);
}

void run(const QString &source)
{
    const ScriptNodePointer script = ScriptParser::parse(source);
    ScriptMachine machine(ScriptCompiler::compile(*script));
    for (int piece = 0; piece < mostPieces; ++piece) {
        const ScriptMachine::State state = machine.run(std::chrono::milliseconds(1));
        if (state == ScriptMachine::State::Finished) {
            ScriptCoercion::resultText(machine.result());
            return;
        }
        if (state == ScriptMachine::State::Waiting)
            answer(machine, piece);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    try {
        run(textOf(data, size));
    } catch (const ScriptError &error) {
        require(!error.errorDescription().isEmpty());
    }
    return 0;
}
