// SPDX-License-Identifier: Apache-2.0
#include "Scripting/Machine/ScriptExpressionCompiler.h"

#include "Scripting/Language/ScriptVocabulary.h"
#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptElements.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;
using Op = ScriptOpcode;

namespace {

const ScriptNode *childAt(const ScriptNode &node, std::size_t index)
{
    return index < node.children.size() ? node.children.at(index).get() : nullptr;
}

// Properties that belong to values, so that an object is asked for its value first.
bool isOfValues(const QString &property)
{
    static const QStringList names{u"length"_s,      u"rest"_s,     u"reverse"_s,
                                   u"quoted form"_s, u"contents"_s, u"class"_s};
    return names.contains(property);
}

// Properties of applications that contain objects.
bool containsObjects(const QString &property)
{
    static const QStringList names{u"desktop"_s, u"home"_s, u"trash"_s, u"startup disk"_s};
    return names.contains(property);
}

// Whether the parameter is a place, such as `end of tabs of window 1`, which has no value.
bool isPlace(const QString &command, const QString &label)
{
    static const QStringList commands{u"make"_s, u"move"_s, u"duplicate"_s};
    return commands.contains(command) && (label == u"at" || label == u"to");
}

bool isElementOfValue(const ScriptNode &node, const ScriptNode &container)
{
    const bool isValue = container.kind == Kind::Property && !containsObjects(container.name);
    return ScriptElements::isTextClass(node.name) || (node.name == u"item" && isValue);
}

} // namespace

void ScriptExpressionCompiler::value(const ScriptNode &node)
{
    object(node);
    switch (node.kind) {
    case Kind::Variable:
    case Kind::Term:
    case Kind::It:
    case Kind::Property:
    case Kind::Element:
        m_writer.add(Op::Resolve);
        break;
    default:
        break;
    }
}

void ScriptExpressionCompiler::object(const ScriptNode &node)
{
    switch (node.kind) {
    case Kind::Literal:
        m_writer.push(node.value);
        break;
    case Kind::Variable:
        m_writer.addNamed(Op::LoadVariable, node.name);
        break;
    case Kind::Term:
        m_writer.addNamed(Op::LoadTerm, node.name, m_lookup == Lookup::PropertyFirst ? 1 : 0);
        break;
    case Kind::It:
        m_writer.add(Op::LoadTarget);
        break;
    case Kind::Script:
        m_writer.add(Op::LoadScript);
        break;
    case Kind::Language:
        m_writer.add(Op::LoadLanguage);
        break;
    case Kind::Result:
        m_writer.add(Op::LoadResult);
        break;
    case Kind::Application:
        value(*node.children.at(0));
        m_writer.add(Op::MakeApplication);
        break;
    case Kind::And:
        logical(node, Op::JumpIfFalseOrDrop);
        break;
    case Kind::Or:
        logical(node, Op::JumpIfTrueOrDrop);
        break;
    case Kind::Property:
        property(node);
        break;
    case Kind::Element:
        element(node, Op::GetElement);
        break;
    case Kind::Filter:
        filter(node);
        break;
    case Kind::Reference:
        reference(*node.children.at(0));
        break;
    case Kind::Call:
        call(node);
        break;
    case Kind::Command:
        command(node);
        break;
    default:
        sequence(node);
        break;
    }
}

// Expressions that only need the values of their parts.
void ScriptExpressionCompiler::sequence(const ScriptNode &node)
{
    for (const ScriptNodePointer &child : node.children)
        value(*child);
    switch (node.kind) {
    case Kind::List:
        m_writer.add(Op::MakeList, static_cast<int>(node.children.size()));
        break;
    case Kind::Record:
        m_writer.add(Op::MakeRecord, m_writer.labels(node.names));
        break;
    case Kind::Binary:
        m_writer.add(Op::Binary, static_cast<int>(node.operation));
        break;
    case Kind::Not:
        m_writer.add(Op::Not);
        break;
    case Kind::Negative:
        m_writer.add(Op::Negate);
        break;
    case Kind::Coercion:
        m_writer.add(Op::Coerce);
        break;
    default:
        throw ScriptError(u"Line %1: A value was expected."_s.arg(node.line), ScriptError::Syntax);
    }
}

void ScriptExpressionCompiler::logical(const ScriptNode &node, ScriptOpcode jump)
{
    value(*node.children.at(0));
    const int skip = m_writer.add(jump);
    value(*node.children.at(1));
    m_writer.add(Op::CheckBoolean);
    m_writer.land(skip);
}

void ScriptExpressionCompiler::property(const ScriptNode &node)
{
    container(node);
    m_writer.addNamed(Op::GetProperty, node.name);
}

// Pushes the container of a property or element; without one, the target of `tell`.
void ScriptExpressionCompiler::container(const ScriptNode &node)
{
    const ScriptNode *container = childAt(node, 0);
    if (!container) {
        m_writer.add(Op::LoadTarget);
        return;
    }
    const bool isOfValue =
        node.kind == Kind::Property ? isOfValues(node.name) : isElementOfValue(node, *container);
    isOfValue ? value(*container) : object(*container);
}

void ScriptExpressionCompiler::element(const ScriptNode &node, ScriptOpcode opcode)
{
    container(node);
    elementOf(node, opcode);
}

// Selects from the container on the stack. The ends of a range may be elements themselves.
void ScriptExpressionCompiler::elementOf(const ScriptNode &node, ScriptOpcode opcode)
{
    int keys = 0;
    for (std::size_t index = 1; index < node.children.size(); ++index) {
        const ScriptNode &key = *node.children.at(index);
        const bool isEnd =
            node.form == ScriptObject::Form::Range && key.kind == Kind::Element && !childAt(key, 0);
        isEnd ? elementOf(key, Op::MakeSelection) : value(key);
        ++keys;
    }
    m_writer.addNamed(opcode, node.name, static_cast<int>(node.form), keys);
}

// Asks for every element, keeps those for which the condition holds, and selects among them.
void ScriptExpressionCompiler::filter(const ScriptNode &node)
{
    const ScriptNode &element = *node.children.at(0);
    container(element);
    m_writer.addNamed(Op::GetElement, element.name, static_cast<int>(ScriptObject::Form::Every), 0);
    m_writer.add(Op::Resolve);
    m_writer.add(Op::BeginFilter);
    const int next = m_writer.add(Op::NextCandidate);
    {
        const QScopedValueRollback lookup(m_lookup, Lookup::PropertyFirst);
        value(*node.children.at(1));
    }
    m_writer.add(Op::KeepCandidate);
    m_writer.add(Op::Jump, next);
    m_writer.land(next);
    m_writer.add(Op::EndFilter);
    if (element.form == ScriptObject::Form::Every)
        return;
    for (std::size_t index = 1; index < element.children.size(); ++index)
        value(*element.children.at(index));
    m_writer.addNamed(Op::GetElement, u"item"_s, static_cast<int>(element.form),
                      static_cast<int>(element.children.size()) - 1);
}

void ScriptExpressionCompiler::reference(const ScriptNode &node)
{
    const bool isItem = node.kind == Kind::Element && node.name == u"item" && childAt(node, 0) &&
                        node.form == ScriptObject::Form::Index;
    if (node.kind == Kind::Variable || node.kind == Kind::Term) {
        m_writer.addNamed(Op::MakeReference, node.name);
    } else if (isItem) {
        value(*node.children.at(0));
        value(*node.children.at(1));
        m_writer.add(Op::MakeItemReference);
    } else {
        object(node);
        m_writer.add(Op::MarkValue);
    }
}

void ScriptExpressionCompiler::call(const ScriptNode &node)
{
    for (const ScriptNodePointer &argument : node.children)
        value(*argument);
    m_writer.addNamed(Op::Call, node.name, m_writer.labels(node.names),
                      static_cast<int>(node.children.size()));
}

// The first child is the direct parameter.
void ScriptExpressionCompiler::command(const ScriptNode &node)
{
    const ScriptNode *direct = childAt(node, 0);
    if (direct) {
        const bool isObject =
            ScriptVocabulary::commandForm(node.name).direct == ScriptCommandForm::Direct::Object;
        isObject ? object(*direct) : value(*direct);
    }
    for (std::size_t index = 1; index < node.children.size(); ++index) {
        const QString &label = node.names.at(static_cast<qsizetype>(index) - 1);
        isPlace(node.name, label) ? object(*node.children.at(index)) : value(*node.children.at(index));
    }
    m_writer.addNamed(Op::Command, node.name, m_writer.labels(node.names), direct ? 1 : 0);
}

void ScriptExpressionCompiler::store(const ScriptNode &target)
{
    switch (target.kind) {
    case Kind::Variable:
        m_writer.addNamed(Op::StoreVariable, target.name);
        break;
    case Kind::Term:
        m_writer.addNamed(Op::StoreTerm, target.name);
        break;
    case Kind::Property:
        storeProperty(target);
        break;
    case Kind::Element:
        element(target, Op::SetElement);
        break;
    case Kind::List:
        storeParts(target);
        break;
    default:
        throw ScriptError(u"Line %1: This can’t be set."_s.arg(target.line), ScriptError::Syntax);
    }
}

void ScriptExpressionCompiler::storeProperty(const ScriptNode &target)
{
    const ScriptNode *container = childAt(target, 0);
    const bool isOfVariable =
        container && (container->kind == Kind::Variable || container->kind == Kind::Term);
    if (target.name == u"contents" && isOfVariable) {
        m_writer.addNamed(Op::StoreContents, container->name);
        return;
    }
    this->container(target);
    m_writer.addNamed(Op::SetProperty, target.name);
}

// `set {a, b} to {1, 2}`
void ScriptExpressionCompiler::storeParts(const ScriptNode &target)
{
    m_writer.add(Op::Spread, static_cast<int>(target.children.size()));
    for (const ScriptNodePointer &part : target.children)
        store(*part);
}
