// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptCompiler.h"

#include "Scripting/Machine/ScriptExpressionCompiler.h"
#include "Scripting/ScriptError.h"

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;
using Op = ScriptOpcode;

namespace {

class StatementCompiler
{
public:
    ScriptCode compile(const ScriptNode &script)
    {
        handlers(script);
        for (const ScriptNodePointer &child : script.children) {
            if (child->kind == Kind::PropertyDefinition)
                propertyDefinition(*child);
        }
        for (const ScriptNodePointer &child : script.children) {
            if (child->kind != Kind::Handler && child->kind != Kind::PropertyDefinition)
                statement(*child);
        }
        if (m_writer.hasHandler(u"run"_s)) {
            m_writer.addNamed(Op::Call, u"run"_s, m_writer.labels({}), 0);
            m_writer.add(Op::StoreResult);
        }
        m_writer.add(Op::LoadResult);
        m_writer.add(Op::Return);
        return m_writer.take();
    }

private:
    // What an exit from a loop has to leave.
    struct Loop
    {
        std::vector<int> exits; // jumps to the end
        std::vector<ScriptOpcode> entered;
    };

    void handlers(const ScriptNode &script)
    {
        const int start = m_writer.add(Op::Jump);
        for (const ScriptNodePointer &child : script.children) {
            if (child->kind == Kind::Handler)
                handler(*child);
        }
        m_writer.land(start);
    }

    // The arguments are on the stack, the last one on top.
    void handler(const ScriptNode &node)
    {
        const int parameters = static_cast<int>(node.children.size()) - 1;
        m_writer.addHandler(node.name, {m_writer.here(), node.names, parameters});
        for (int index = parameters - 1; index >= 0; --index)
            parameter(*node.children.at(static_cast<std::size_t>(index)));
        statement(*node.children.back());
        m_writer.add(Op::LoadResult);
        m_writer.add(Op::Return);
    }

    void parameter(const ScriptNode &node)
    {
        if (node.kind == Kind::Variable) {
            m_writer.addNamed(Op::StoreLocal, node.name);
            return;
        }
        m_writer.add(Op::Spread, static_cast<int>(node.children.size()));
        for (const ScriptNodePointer &part : node.children)
            parameter(*part);
    }

    void propertyDefinition(const ScriptNode &node)
    {
        m_expressions.value(*node.children.at(0));
        m_writer.addNamed(Op::DefineProperty, node.name);
    }

    void statement(const ScriptNode &node)
    {
        switch (node.kind) {
        case Kind::Block:
            for (const ScriptNodePointer &child : node.children)
                statement(*child);
            break;
        case Kind::Set:
            assignment(*node.children.at(1), *node.children.at(0), Sharing::Shared);
            break;
        case Kind::Copy:
            assignment(*node.children.at(1), *node.children.at(0), Sharing::Copied);
            break;
        case Kind::If:
            condition(node);
            break;
        case Kind::ExitRepeat:
            exitRepeat(node);
            break;
        case Kind::Try:
            attempt(node);
            break;
        case Kind::Error:
            error(node);
            break;
        case Kind::Tell:
            m_expressions.object(*node.children.at(0));
            enclosed(Op::EnterTell, 0, Op::LeaveTell, *node.children.at(1));
            break;
        case Kind::Considering:
            enclosed(Op::EnterConsidering, m_writer.labels(node.names), Op::LeaveConsidering,
                     *node.children.at(0));
            break;
        case Kind::Return:
            returned(node);
            break;
        case Kind::Global:
            m_writer.add(Op::DeclareGlobals, m_writer.labels(node.names));
            break;
        case Kind::Local:
            m_writer.add(Op::DeclareLocals, m_writer.labels(node.names));
            break;
        case Kind::PropertyDefinition:
            propertyDefinition(node);
            break;
        default:
            loopOrEvaluation(node);
            break;
        }
    }

    void loopOrEvaluation(const ScriptNode &node)
    {
        switch (node.kind) {
        case Kind::RepeatForever:
            conditionalLoop(nullptr, Op::JumpIfFalse, *node.children.at(0));
            break;
        case Kind::RepeatWhile:
        case Kind::RepeatUntil:
            conditionalLoop(node.children.at(0).get(),
                            node.kind == Kind::RepeatWhile ? Op::JumpIfFalse : Op::Not, *node.children.at(1));
            break;
        case Kind::RepeatTimes:
            m_expressions.value(*node.children.at(0));
            countedLoop(Op::BeginTimes, -1, *node.children.at(1));
            break;
        case Kind::RepeatWithRange:
            range(node);
            countedLoop(Op::BeginRange, m_writer.name(node.name), *node.children.at(3));
            break;
        case Kind::RepeatWithList:
            m_expressions.value(*node.children.at(0));
            countedLoop(Op::BeginList, m_writer.name(node.name), *node.children.at(1));
            break;
        default:
            m_expressions.value(*node.children.at(0));
            m_writer.add(Op::StoreResult);
            break;
        }
    }

    enum class Sharing { Shared, Copied };

    void assignment(const ScriptNode &value, const ScriptNode &target, Sharing sharing)
    {
        m_expressions.value(value);
        if (sharing == Sharing::Copied)
            m_writer.add(Op::Duplicate);
        m_writer.add(Op::StoreResult);
        m_writer.add(Op::LoadResult);
        m_expressions.store(target);
    }

    void condition(const ScriptNode &node)
    {
        m_expressions.value(*node.children.at(0));
        const int otherwise = m_writer.add(Op::JumpIfFalse);
        statement(*node.children.at(1));
        if (node.children.size() < 3) {
            m_writer.land(otherwise);
            return;
        }
        const int end = m_writer.add(Op::Jump);
        m_writer.land(otherwise);
        statement(*node.children.at(2));
        m_writer.land(end);
    }

    // A loop without state of its own; `Not` stands for a loop until the test holds.
    void conditionalLoop(const ScriptNode *test, ScriptOpcode kind, const ScriptNode &body)
    {
        m_loops.emplace_back();
        const int start = m_writer.here();
        if (test) {
            m_expressions.value(*test);
            if (kind == Op::Not)
                m_writer.add(Op::Not);
            m_loops.back().exits.push_back(m_writer.add(Op::JumpIfFalse));
        }
        statement(body);
        m_writer.add(Op::Jump, start);
        landExits();
    }

    void range(const ScriptNode &node)
    {
        m_expressions.value(*node.children.at(0));
        m_expressions.value(*node.children.at(1));
        if (node.children.at(2))
            m_expressions.value(*node.children.at(2));
        else
            m_writer.push(qint64(1));
    }

    void countedLoop(ScriptOpcode begin, int variable, const ScriptNode &body)
    {
        m_writer.add(begin);
        m_loops.emplace_back();
        const int next = m_writer.add(Op::NextRound, variable);
        statement(body);
        m_writer.add(Op::Jump, next);
        m_writer.land(next);
        landExits();
        m_writer.add(Op::EndLoop);
    }

    void landExits()
    {
        for (const int exit : m_loops.back().exits)
            m_writer.land(exit);
        m_loops.pop_back();
    }

    void exitRepeat(const ScriptNode &node)
    {
        if (m_loops.empty())
            throw ScriptError(u"Line %1: “exit repeat” is not inside a “repeat”."_s.arg(node.line),
                              ScriptError::Syntax);
        Loop &loop = m_loops.back();
        for (auto leave = loop.entered.rbegin(); leave != loop.entered.rend(); ++leave)
            m_writer.add(*leave);
        loop.exits.push_back(m_writer.add(Op::Jump));
    }

    void enclosed(ScriptOpcode enter, int operand, ScriptOpcode leave, const ScriptNode &body)
    {
        m_writer.add(enter, operand);
        entered(leave, body);
        m_writer.add(leave);
    }

    // Compiles the body so that an exit from the surrounding loop leaves this first.
    void entered(ScriptOpcode leave, const ScriptNode &body)
    {
        if (!m_loops.empty())
            m_loops.back().entered.push_back(leave);
        statement(body);
        if (!m_loops.empty())
            m_loops.back().entered.pop_back();
    }

    void attempt(const ScriptNode &node)
    {
        const int enter = m_writer.add(Op::EnterTry);
        entered(Op::LeaveTry, *node.children.at(0));
        m_writer.add(Op::LeaveTry);
        const int end = m_writer.add(Op::Jump);
        m_writer.land(enter);
        if (node.children.size() > 1) {
            storeErrorPart(Op::LoadErrorMessage, node.names.at(0));
            storeErrorPart(Op::LoadErrorNumber, node.names.at(1));
            statement(*node.children.at(1));
        }
        m_writer.land(end);
    }

    void storeErrorPart(ScriptOpcode load, const QString &variable)
    {
        if (variable.isEmpty())
            return;
        m_writer.add(load);
        m_writer.addNamed(Op::StoreVariable, variable);
    }

    void error(const ScriptNode &node)
    {
        for (const ScriptNodePointer &part : node.children) {
            if (part)
                m_expressions.value(*part);
            else
                m_writer.push({});
        }
        m_writer.add(Op::Raise);
    }

    void returned(const ScriptNode &node)
    {
        if (node.children.at(0))
            m_expressions.value(*node.children.at(0));
        else
            m_writer.push({});
        m_writer.add(Op::Return);
    }

    ScriptCodeWriter m_writer;
    ScriptExpressionCompiler m_expressions{m_writer};
    std::vector<Loop> m_loops;
};

} // namespace

ScriptCode ScriptCompiler::compile(const ScriptNode &script)
{
    return StatementCompiler().compile(script);
}
