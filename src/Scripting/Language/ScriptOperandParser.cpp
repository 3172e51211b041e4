// SPDX-License-Identifier: Apache-2.0
// The operands of ScriptExpressionParser: literals, variables and properties.
#include "Scripting/Language/ScriptExpressionParser.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptDates.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;
using Form = ScriptObject::Form;

ScriptNodePointer ScriptExpressionParser::literal(int line, ScriptValue value)
{
    ScriptNodePointer literal = node(Kind::Literal, line);
    literal->value = std::move(value);
    return literal;
}

ScriptNodePointer ScriptExpressionParser::operand()
{
    const Level level(*this);
    while (m_cursor.isWord(u"the") && !m_cursor.areWords(u"the clipboard"))
        m_cursor.take();
    const ScriptToken &token = m_cursor.peek();
    switch (token.kind) {
    case ScriptToken::Kind::Number:
        return literal(token.line, m_cursor.take().number);
    case ScriptToken::Kind::Text:
        return literal(token.line, m_cursor.take().text);
    case ScriptToken::Kind::Barred:
        return variableOrCall();
    case ScriptToken::Kind::Word:
        return wordOperand();
    default:
        break;
    }
    if (m_cursor.isSymbol(u"("))
        return parenthesized();
    if (m_cursor.isSymbol(u"{"))
        return listOrRecord();
    m_cursor.fail();
}

ScriptNodePointer ScriptExpressionParser::parenthesized()
{
    const QScopedValueRollback labels(m_labels, QStringList());
    m_cursor.expectSymbol(u"(");
    ScriptNodePointer value = expression();
    m_cursor.expectSymbol(u")");
    return value;
}

bool ScriptExpressionParser::isRecordKey() const
{
    qsizetype words = 1;
    while (words < ScriptVocabulary::longestPhrase && m_cursor.peek(words).kind == ScriptToken::Kind::Word)
        ++words;
    const auto kind = m_cursor.peek().kind;
    const bool isName = kind == ScriptToken::Kind::Word || kind == ScriptToken::Kind::Barred;
    return isName && m_cursor.isSymbol(u":", words);
}

QString ScriptExpressionParser::recordKey()
{
    if (!isRecordKey())
        m_cursor.failExpecting(u"a label"_s);
    QStringList words;
    while (!m_cursor.isSymbol(u":"))
        words.append(m_cursor.take().text);
    m_cursor.take();
    return words.join(u' ');
}

ScriptNodePointer ScriptExpressionParser::listOrRecord()
{
    const QScopedValueRollback labels(m_labels, QStringList());
    const int line = m_cursor.take().line;
    if (isRecordKey())
        return recordRest(node(Kind::Record, line));
    ScriptNodePointer list = node(Kind::List, line);
    while (!m_cursor.takeSymbol(u"}")) {
        if (!list->children.empty())
            m_cursor.expectSymbol(u",");
        list->children.push_back(expression());
    }
    return list;
}

ScriptNodePointer ScriptExpressionParser::recordRest(ScriptNodePointer record)
{
    do {
        record->names.append(recordKey());
        record->children.push_back(expression());
    } while (m_cursor.takeSymbol(u","));
    m_cursor.expectSymbol(u"}");
    return record;
}

// Words of the grammar before phrases, phrases before names.
ScriptNodePointer ScriptExpressionParser::wordOperand()
{
    if (ScriptNodePointer found = grammarWord())
        return found;
    const ScriptPhrase *phrase = m_cursor.phrase();
    if (phrase && !isOwnVariable(*phrase))
        return phrased(*phrase);
    const bool isLabel = !phrase && ScriptVocabulary::isReserved(m_cursor.peek().text);
    if (isLabel)
        m_cursor.fail();
    return variableOrCall();
}

// Null if no such word is next.
ScriptNodePointer ScriptExpressionParser::grammarWord()
{
    const int line = m_cursor.line();
    if (m_cursor.isWord(u"my") || m_cursor.isWord(u"its"))
        return own();
    if (m_cursor.takeWord(u"it"))
        return node(Kind::It, line);
    if (m_cursor.takeWord(u"me") || m_cursor.takeWords(u"current application"))
        return node(Kind::Script, line);
    if (m_cursor.takeWord(u"applescript"))
        return node(Kind::Language, line);
    if (m_cursor.takeWord(u"result"))
        return node(Kind::Result, line);
    // "application process" and "application file" are classes of elements.
    const bool isApplication =
        (m_cursor.isWord(u"application") || m_cursor.isWord(u"app")) && !m_cursor.phrase();
    if (isApplication && (isKeyNext(1) || m_cursor.isWord(u"id", 1)))
        return application();
    if (isApplication && m_cursor.takeWord(u"application"))
        return literal(line, ScriptClass{u"application"_s});
    if (m_cursor.isWord(u"date") && m_cursor.peek(1).kind == ScriptToken::Kind::Text)
        return dateLiteral();
    if (m_cursor.areWords(u"a reference to") || m_cursor.areWords(u"a ref to") ||
        m_cursor.areWords(u"reference to") || m_cursor.areWords(u"ref to"))
        return referenceTo();
    if (m_cursor.isWord(u"every"))
        return everyElement();
    if (m_cursor.isWord(u"some") || m_cursor.isWord(u"middle")) {
        const bool isMiddle = m_cursor.take().text == u"middle";
        return ordinalElement({}, isMiddle ? Form::Middle : Form::Some);
    }
    const auto ordinal = ScriptVocabulary::ordinal(m_cursor.peek().text);
    if (!ordinal || m_cursor.phrase())
        return nullptr;
    m_cursor.take();
    return ordinalElement(qint64(*ordinal), Form::Index);
}

// `my x` is the script's, `its x` the target's.
ScriptNodePointer ScriptExpressionParser::own()
{
    const ScriptToken word = m_cursor.take();
    ScriptNodePointer part = operand();
    if (part->kind == Kind::Call || part->kind == Kind::Command)
        return part;
    if (part->kind == Kind::Variable || part->kind == Kind::Term)
        part->kind = Kind::Property;
    if (part->kind != Kind::Property && part->kind != Kind::Element)
        m_cursor.fail();
    if (part->children.empty())
        part->children.emplace_back();
    part->children.front() = node(word.text == u"my" ? Kind::Script : Kind::It, word.line);
    return part;
}

// An application is known by its name; an identifier ends with it ("com.apple.finder").
ScriptNodePointer ScriptExpressionParser::application()
{
    const int line = m_cursor.take().line;
    m_cursor.takeWord(u"id");
    return node(Kind::Application, line, {}, operand());
}

ScriptNodePointer ScriptExpressionParser::dateLiteral()
{
    const int line = m_cursor.take().line;
    const ScriptToken text = m_cursor.take();
    const std::optional<QDateTime> time = ScriptDates::fromText(text.text);
    if (!time)
        throw ScriptError(u"Line %1: “%2” is no date."_s.arg(line).arg(text.text.left(40)),
                          ScriptError::Syntax);
    return node(Kind::Coercion, line, {}, literal(line, text.text), literal(line, ScriptClass{u"date"_s}));
}

ScriptNodePointer ScriptExpressionParser::referenceTo()
{
    const int line = m_cursor.line();
    while (m_cursor.take().text != u"to") {
    }
    return node(Kind::Reference, line, {}, reference());
}

QString ScriptExpressionParser::variableName()
{
    const ScriptToken token = m_cursor.peek();
    const bool isName = token.kind == ScriptToken::Kind::Barred ||
                        (token.kind == ScriptToken::Kind::Word && !ScriptVocabulary::isReserved(token.text));
    if (!isName)
        m_cursor.failExpecting(u"a name"_s);
    m_cursor.take();
    return token.text.toLower();
}

ScriptNodePointer ScriptExpressionParser::variableOrCall()
{
    const int line = m_cursor.line();
    const QString name = m_cursor.take().text.toLower();
    if (m_cursor.isSymbol(u"("))
        return positionalCall(name);
    const auto handler = m_handlers.constFind(name);
    if (handler != m_handlers.cend() && !handler->labels.isEmpty() && !nextLabel(handler->labels).isEmpty())
        return labelledCall(name, *handler);
    return node(Kind::Variable, line, name);
}

// A name from the vocabulary that the script assigns or defines as a handler is the script's own, unless it
// is used like the phrase.
bool ScriptExpressionParser::isOwnVariable(const ScriptPhrase &phrase) const
{
    const bool isCall = m_cursor.isSymbol(u"(", 1) && m_handlers.contains(m_cursor.peek().text);
    if (isCall)
        return true;
    if (phrase.words != 1 || !m_variables.contains(m_cursor.peek().text))
        return false;
    const auto next = m_cursor.peek(1).kind;
    return phrase.kind != ScriptPhrase::Kind::Property && next != ScriptToken::Kind::Number &&
           next != ScriptToken::Kind::Text && !m_cursor.isWord(u"of", 1);
}

ScriptNodePointer ScriptExpressionParser::phrased(const ScriptPhrase &phrase)
{
    const int line = m_cursor.line();
    const bool hasContainer = m_cursor.isWord(u"of", phrase.words);
    switch (phrase.kind) {
    case ScriptPhrase::Kind::Command:
        return command(phrase);
    case ScriptPhrase::Kind::Class:
    case ScriptPhrase::Kind::Classes:
        m_cursor.skip(phrase.words);
        return ofClass(phrase);
    case ScriptPhrase::Kind::Constant:
        m_cursor.skip(phrase.words);
        // `minutes of d` is a property, `5 * minutes` a constant.
        return hasContainer ? node(Kind::Property, line, phrase.name) : literal(line, phrase.value);
    case ScriptPhrase::Kind::Property:
        break;
    }
    m_cursor.skip(phrase.words);
    if (namesElements(phrase) && isKeyNext())
        return elementByKey(phrase.name);
    return hasContainer ? node(Kind::Property, line, phrase.name) : node(Kind::Term, line, phrase.name);
}
