// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Scripting/Language/ScriptSyntax.h"
#include "Scripting/Language/ScriptTokenCursor.h"

#include <QHash>
#include <QSet>

// A call of a script's own handler by labels: `findMax of x above y`.
struct ScriptHandlerForm
{
    QStringList labels; // in the order of definition
};

// Parses expressions and commands. Throws ScriptError.
class ScriptExpressionParser
{
public:
    explicit ScriptExpressionParser(ScriptTokenCursor &cursor);

    // Collects the script's variables and handlers, whose names take precedence over the vocabulary.
    void collectNames(const QList<ScriptToken> &tokens);

    ScriptNodePointer expression();
    // Called before each statement, because the number of operators in one is limited.
    void beginStatement() { m_operators = 0; }
    // Variables, properties and elements, with their containers; also every other operand without operators.
    ScriptNodePointer reference();
    // A name that can be assigned or be a parameter. Returns its lower-case form.
    QString variableName();
    // The parameters of a command or of a handler that is called by labels.
    ScriptNodePointer command(const ScriptPhrase &phrase);

    // The label that is next, or an empty string: one of these, or a preposition.
    QString nextLabel(const QStringList &labels) const;

    static ScriptNodePointer node(ScriptNode::Kind kind, int line, QString name = {});
    static ScriptNodePointer literal(int line, ScriptValue value);
    template <typename... Children>
    static ScriptNodePointer node(ScriptNode::Kind kind, int line, QString name, Children &&...children)
    {
        ScriptNodePointer created = node(kind, line, std::move(name));
        (created->children.push_back(std::forward<Children>(children)), ...);
        return created;
    }

    // Limits nesting while it exists.
    class Level
    {
    public:
        explicit Level(ScriptExpressionParser &parser);
        ~Level() { --m_parser.m_depth; }
        Q_DISABLE_COPY_MOVE(Level)

    private:
        ScriptExpressionParser &m_parser;
    };

private:
    // Throws if the statement has too many operators.
    void countOperator();
    ScriptNodePointer binary(ScriptOperator operation, int line, ScriptNodePointer left,
                             ScriptNodePointer right);
    // The binary operators, by precedence.
    ScriptNodePointer disjunction();
    ScriptNodePointer conjunction();
    ScriptNodePointer negation();
    ScriptNodePointer comparison();
    ScriptNodePointer comparedProperty(ScriptNodePointer &left);
    ScriptNodePointer coercion();
    ScriptNodePointer concatenation();
    ScriptNodePointer sum();
    ScriptNodePointer product();
    ScriptNodePointer power();
    ScriptNodePointer signedOperand();

    ScriptNodePointer chain();
    void takeContainer(ScriptNode &innermost);
    ScriptNodePointer filtered(ScriptNodePointer outermost);

    ScriptNodePointer operand();
    ScriptNodePointer wordOperand();
    ScriptNodePointer grammarWord();
    ScriptNodePointer parenthesized();
    ScriptNodePointer listOrRecord();
    ScriptNodePointer recordRest(ScriptNodePointer record);
    QString recordKey();
    bool isRecordKey() const;
    ScriptNodePointer application();
    ScriptNodePointer dateLiteral();
    ScriptNodePointer referenceTo();
    ScriptNodePointer own();
    ScriptNodePointer variableOrCall();
    ScriptNodePointer positionalCall(const QString &name);
    ScriptNodePointer labelledCall(const QString &name, const ScriptHandlerForm &form);
    void takeBooleanParameters(ScriptNode &call, bool value);
    bool takeLabelSeparator();
    void takeGivenParameters(ScriptNode &call);

    ScriptNodePointer phrased(const ScriptPhrase &phrase);
    bool isOwnVariable(const ScriptPhrase &phrase) const;
    ScriptNodePointer ofClass(const ScriptPhrase &phrase);
    ScriptNodePointer everyElement();
    ScriptNodePointer ordinalElement(const ScriptValue &index, ScriptObject::Form form);
    ScriptNodePointer elementByKey(const QString &className);
    ScriptNodePointer signedKey();
    ScriptNodePointer range(ScriptNodePointer element, ScriptNodePointer first);
    bool isKeyNext(qsizetype offset = 0) const;
    bool isKeyWord(qsizetype offset) const;
    bool isOperandNext() const;
    static bool namesElements(const ScriptPhrase &phrase);
    QString expectClass();

    void takeDirectParameter(ScriptNode &call, const ScriptCommandForm &form);
    void takeLabels(ScriptNode &call, const QStringList &labels);
    ScriptNodePointer labelValue(const QString &label);

    ScriptTokenCursor &m_cursor;
    QSet<QString> m_variables;
    QHash<QString, ScriptHandlerForm> m_handlers;
    QStringList m_labels; // of the commands that are being parsed: they end their parameters
    int m_depth = 0;
    int m_operators = 0; // of the statement; each may deepen the tree
};
