// SPDX-License-Identifier: Apache-2.0
// The operands of ScriptExpressionParser: literals, variables, properties and elements.
#include "Scripting/Language/ScriptExpressionParser.h"

#include "Scripting/ScriptError.h"
#include "Scripting/Values/ScriptDates.h"

#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;
using Form = ScriptObject::Form;

namespace {

ScriptNodePointer literal(int line, ScriptValue value)
{
    ScriptNodePointer node = ScriptExpressionParser::node(Kind::Literal, line);
    node->value = std::move(value);
    return node;
}

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

// The desktop is a folder, but there are also several.
bool isClass(const ScriptPhrase &phrase)
{
    return phrase.kind == ScriptPhrase::Kind::Class || phrase.kind == ScriptPhrase::Kind::Classes ||
           phrase.name == u"desktop";
}

} // namespace

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
    if (!phrase || !isClass(*phrase)) {
        if (!m_cursor.isWord(u"application"))
            m_cursor.failExpecting(u"a class"_s);
        return m_cursor.take().text;
    }
    m_cursor.skip(phrase->words);
    return phrase->name;
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

ScriptNodePointer ScriptExpressionParser::positionalCall(const QString &name)
{
    const QScopedValueRollback labels(m_labels, QStringList());
    ScriptNodePointer call = node(Kind::Call, m_cursor.line(), name);
    m_cursor.expectSymbol(u"(");
    while (!m_cursor.takeSymbol(u")")) {
        if (!call->children.empty())
            m_cursor.expectSymbol(u",");
        call->children.push_back(expression());
    }
    return call;
}

ScriptNodePointer ScriptExpressionParser::labelledCall(const QString &name, const ScriptHandlerForm &form)
{
    const QScopedValueRollback labels(m_labels, m_labels + form.labels);
    ScriptNodePointer call = node(Kind::Call, m_cursor.line(), name);
    while (true) {
        const QString label = nextLabel(form.labels);
        if (m_cursor.isWord(u"given")) {
            takeGivenParameters(*call);
        } else if (label.isEmpty() && (m_cursor.isWord(u"with") || m_cursor.isWord(u"without"))) {
            takeBooleanParameters(*call, m_cursor.take().text == u"with");
        } else if (!label.isEmpty() && !call->names.contains(label)) {
            m_cursor.skip(label.count(u' ') + 1);
            call->names.append(label);
            call->children.push_back(expression());
        } else {
            return call;
        }
    }
}

void ScriptExpressionParser::takeGivenParameters(ScriptNode &call)
{
    m_cursor.expectWord(u"given");
    do {
        call.names.append(recordKey());
        call.children.push_back(expression());
    } while (m_cursor.takeSymbol(u","));
}

// `with multiple selections allowed and empty selection allowed`
void ScriptExpressionParser::takeBooleanParameters(ScriptNode &call, bool value)
{
    do {
        const int line = m_cursor.line();
        const QString label = nextLabel(m_labels);
        if (label.isEmpty())
            m_cursor.fail();
        m_cursor.skip(label.count(u' ') + 1);
        call.names.append(label);
        call.children.push_back(literal(line, value));
    } while (takeLabelSeparator());
}

// A comma may also belong to a list around the command.
bool ScriptExpressionParser::takeLabelSeparator()
{
    if (!m_cursor.isSymbol(u",") && !m_cursor.isWord(u"and"))
        return false;
    ScriptTokenCursor ahead = m_cursor;
    ahead.skip(1);
    const bool isLabel = std::any_of(m_labels.begin(), m_labels.end(),
                                     [&ahead](const QString &label) { return ahead.areWords(label); });
    m_cursor.skip(isLabel ? 1 : 0);
    return isLabel;
}

QString ScriptExpressionParser::nextLabel(const QStringList &labels) const
{
    QString longest;
    for (const QString &label : labels) {
        if (label.size() > longest.size() && m_cursor.areWords(label))
            longest = label;
    }
    return longest;
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
    if (isClass(phrase) && isKeyNext())
        return elementByKey(phrase.name);
    return hasContainer ? node(Kind::Property, line, phrase.name) : node(Kind::Term, line, phrase.name);
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
