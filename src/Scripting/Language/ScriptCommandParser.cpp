// SPDX-License-Identifier: Apache-2.0
// The commands and calls of ScriptExpressionParser, and the names that a script defines itself.
#include "Scripting/Language/ScriptExpressionParser.h"

#include <QScopedValueRollback>

#include <algorithm>

using namespace Qt::StringLiterals;

using Kind = ScriptNode::Kind;
using Direct = ScriptCommandForm::Direct;

namespace {

bool isName(const ScriptToken &token)
{
    return token.kind == ScriptToken::Kind::Word || token.kind == ScriptToken::Kind::Barred;
}

// Whether a statement begins here.
bool isFirstOfLine(const QList<ScriptToken> &tokens, qsizetype index)
{
    return index == 0 || tokens.at(index - 1).kind == ScriptToken::Kind::LineEnd;
}

// The labels in a handler's first line: prepositions, and the labels after `given`.
QStringList labelsIn(const QList<ScriptToken> &tokens, qsizetype index)
{
    QStringList labels;
    bool isGiven = false;
    for (; tokens.at(index).kind != ScriptToken::Kind::LineEnd; ++index) {
        const ScriptToken &token = tokens.at(index);
        isGiven = isGiven || token.isWord(u"given");
        const bool isLabel = isGiven ? tokens.at(index + 1).isSymbol(u":")
                                     : ScriptVocabulary::prepositions().contains(token.text);
        const bool isWord = token.kind == ScriptToken::Kind::Word;
        // "out of" and the like have two words.
        const QString both = token.text + u' ' + tokens.at(index + 1).text;
        const bool isDouble = !isGiven && isWord && ScriptVocabulary::prepositions().contains(both);
        if (isDouble)
            ++index;
        if (isWord && (isLabel || isDouble))
            labels.append(isDouble ? both : token.text);
    }
    return labels;
}

} // namespace

void ScriptExpressionParser::collectNames(const QList<ScriptToken> &tokens)
{
    // The last two tokens end the script.
    for (qsizetype index = 0; index + 3 < tokens.size(); ++index) {
        const ScriptToken &token = tokens.at(index);
        const ScriptToken &name = tokens.at(index + 1);
        const ScriptToken &next = tokens.at(index + 2);
        if (token.kind != ScriptToken::Kind::Word || !isName(name))
            continue;
        const bool isAssigned = (token.text == u"set" && next.isWord(u"to")) ||
                                (token.text == u"with" && (next.isWord(u"in") || next.isWord(u"from"))) ||
                                (token.text == u"property" && next.isSymbol(u":"));
        if (isAssigned)
            m_variables.insert(name.text.toLower());
        const bool isHandler = (token.text == u"on" || token.text == u"to") && isFirstOfLine(tokens, index) &&
                               name.text != u"error";
        if (isHandler)
            m_handlers.insert(name.text.toLower(),
                              {next.isSymbol(u"(") ? QStringList() : labelsIn(tokens, index + 2)});
    }
}

ScriptNodePointer ScriptExpressionParser::command(const ScriptPhrase &phrase)
{
    const ScriptCommandForm &form = ScriptVocabulary::commandForm(phrase.name);
    ScriptNodePointer call = node(Kind::Command, m_cursor.line(), form.name);
    m_cursor.skip(phrase.words);
    const QScopedValueRollback labels(m_labels, m_labels + form.labels);
    takeDirectParameter(*call, form);
    takeLabels(*call, form.labels);
    return call;
}

bool ScriptExpressionParser::isOperandNext() const
{
    const ScriptToken &token = m_cursor.peek();
    switch (token.kind) {
    case ScriptToken::Kind::LineEnd:
    case ScriptToken::Kind::End:
        return false;
    case ScriptToken::Kind::Symbol:
        return token.text == u"(" || token.text == u"{" || token.text == u"-";
    case ScriptToken::Kind::Word:
        break;
    default:
        return true;
    }
    static const QStringList starts{u"the"_s, u"my"_s,  u"its"_s,   u"it"_s,
                                    u"me"_s,  u"not"_s, u"every"_s, u"result"_s};
    return nextLabel(m_labels).isEmpty() && !m_cursor.comparison() &&
           (starts.contains(token.text) || m_cursor.phrase() || !ScriptVocabulary::isReserved(token.text));
}

void ScriptExpressionParser::takeDirectParameter(ScriptNode &call, const ScriptCommandForm &form)
{
    call.children.emplace_back();
    // `count of x`, `get the x`
    if (form.direct == Direct::Operand)
        m_cursor.takeWord(u"of");
    if (form.direct == Direct::None || !isOperandNext())
        return;
    call.children.front() = form.direct == Direct::Operand ? reference() : expression();
}

void ScriptExpressionParser::takeLabels(ScriptNode &call, const QStringList &labels)
{
    while (true) {
        const QString label = nextLabel(labels);
        const bool isFlag = label.isEmpty() && (m_cursor.isWord(u"with") || m_cursor.isWord(u"without"));
        if (isFlag) {
            takeBooleanParameters(call, m_cursor.take().text == u"with");
        } else if (!label.isEmpty() && !call.names.contains(label)) {
            m_cursor.skip(label.count(u' ') + 1);
            call.names.append(label);
            call.children.push_back(labelValue(label));
        } else {
            return;
        }
    }
}

// Icons have the names of commands and classes.
ScriptNodePointer ScriptExpressionParser::labelValue(const QString &label)
{
    const bool isWord = m_cursor.peek().kind == ScriptToken::Kind::Word;
    if (label != u"with icon" || !isWord)
        return expression();
    ScriptNodePointer icon = node(Kind::Literal, m_cursor.line());
    icon->value = ScriptConstant{m_cursor.take().text};
    return icon;
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
