// SPDX-License-Identifier: Apache-2.0
// The elements of ScriptExpressionParser: `every window`, `word 2`, `items 1 thru 3`.
#include "Scripting/Language/ScriptExpressionParser.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;
using Form = ScriptObject::Form;

namespace {

// An element without a container yet: its children are the container and the key.
ScriptNodePointer elementNode(int line, const QString &className, Form form, ScriptNodePointer key = nullptr)
{
    ScriptNodePointer node = ScriptExpressionParser::node(Kind::Element, line, className);
    node->form = form;
    node->children.emplace_back();
    if (key)
        node->children.push_back(std::move(key));
    return node;
}

} // namespace

// The desktop is a folder, but there are also several.
bool ScriptExpressionParser::namesElements(const ScriptPhrase &phrase)
{
    return phrase.kind == ScriptPhrase::Kind::Class || phrase.kind == ScriptPhrase::Kind::Classes ||
           phrase.name == u"desktop";
}

ScriptNodePointer ScriptExpressionParser::everyElement()
{
    const int line = m_cursor.take().line;
    return elementNode(line, expectClass(), Form::Every);
}

ScriptNodePointer ScriptExpressionParser::ordinalElement(const ScriptValue &index, Form form)
{
    const int line = m_cursor.line();
    const QString className = expectClass();
    return elementNode(line, className, form, index.isMissing() ? nullptr : literal(line, index));
}

QString ScriptExpressionParser::expectClass()
{
    const ScriptPhrase *phrase = m_cursor.phrase();
    if (!phrase || !namesElements(*phrase)) {
        if (!m_cursor.isWord(u"application"))
            m_cursor.failExpecting(u"a class"_s);
        return m_cursor.take().text;
    }
    m_cursor.skip(phrase->words);
    return phrase->name;
}

// After the name of a class: an element, every element, or the class itself.
ScriptNodePointer ScriptExpressionParser::ofClass(const ScriptPhrase &phrase)
{
    const int line = m_cursor.line();
    const bool isPlural = phrase.kind == ScriptPhrase::Kind::Classes;
    if (isKeyNext())
        return elementByKey(phrase.name);
    if (isPlural)
        return elementNode(line, phrase.name, Form::Every);
    if (m_cursor.isWord(u"of") || m_cursor.isSymbol(u"'s"))
        return node(Kind::Property, line, phrase.name);
    return literal(line, phrase.value.isMissing() ? ScriptValue(ScriptClass{phrase.name}) : phrase.value);
}

// Whether an index, name or identifier of an element comes after these tokens.
bool ScriptExpressionParser::isKeyNext(qsizetype offset) const
{
    const ScriptToken &token = m_cursor.peek(offset);
    const auto next = m_cursor.peek(offset + 1).kind;
    switch (token.kind) {
    case ScriptToken::Kind::Number:
    case ScriptToken::Kind::Text:
    case ScriptToken::Kind::Barred:
        return true;
    case ScriptToken::Kind::Symbol:
        return token.text == u"(" || (token.text == u"-" && next == ScriptToken::Kind::Number);
    case ScriptToken::Kind::Word:
        break;
    default:
        return false;
    }
    static const QStringList forms{u"id"_s, u"named"_s, u"index"_s, u"from"_s, u"my"_s};
    const bool isForm = forms.contains(token.text) && !m_cursor.isWord(u"of", offset + 1);
    return isForm ? !m_cursor.isLineEnd(offset + 1) : isKeyWord(offset);
}

// Whether a variable that may be a key comes after these tokens.
bool ScriptExpressionParser::isKeyWord(qsizetype offset) const
{
    ScriptTokenCursor ahead = m_cursor;
    ahead.skip(offset);
    const QString &word = ahead.peek().text;
    const bool isLabel = std::any_of(m_labels.begin(), m_labels.end(),
                                     [&ahead](const QString &label) { return ahead.areWords(label); });
    return !isLabel && !ahead.comparison() &&
           (m_variables.contains(word) || (!ScriptVocabulary::isReserved(word) && !ahead.phrase()));
}

ScriptNodePointer ScriptExpressionParser::elementByKey(const QString &className)
{
    const int line = m_cursor.line();
    if (m_cursor.takeWord(u"id"))
        return elementNode(line, className, Form::Identifier, operand());
    if (m_cursor.takeWord(u"named"))
        return elementNode(line, className, Form::Name, operand());
    if (!m_labels.contains(u"from"_s) && m_cursor.takeWord(u"from")) {
        ScriptNodePointer first = signedKey();
        if (!m_cursor.isWord(u"to") && !m_cursor.isWord(u"thru") && !m_cursor.isWord(u"through"))
            m_cursor.failExpecting(u"“to”"_s);
        return range(elementNode(line, className, Form::Range), std::move(first));
    }
    m_cursor.takeWord(u"index");
    ScriptNodePointer key = signedKey();
    if (m_cursor.isWord(u"thru") || m_cursor.isWord(u"through"))
        return range(elementNode(line, className, Form::Range), std::move(key));
    // The key's class tells at run time whether it is an index or a name.
    return elementNode(line, className, Form::Index, std::move(key));
}

// An index may be negative; what follows "of" is not part of it.
ScriptNodePointer ScriptExpressionParser::signedKey()
{
    const int line = m_cursor.line();
    return m_cursor.takeSymbol(u"-") ? node(Kind::Negative, line, {}, operand()) : operand();
}

ScriptNodePointer ScriptExpressionParser::range(ScriptNodePointer element, ScriptNodePointer first)
{
    m_cursor.take();
    element->children.push_back(std::move(first));
    element->children.push_back(signedKey());
    return element;
}
