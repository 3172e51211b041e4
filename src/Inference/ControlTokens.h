// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// The texts that a model's tokenizer turns into control tokens (turn markers, end of text, ...). Prompts are
// tokenised with special tokens enabled because the chat template needs its markers, so message contents must
// not contain any: a window title could otherwise open a turn of its own. Immutable; any thread.
class ControlTokens
{
public:
    ControlTokens() = default;
    explicit ControlTokens(const QStringList &texts);

    // Inserts a blank into every control token text, including those that breaking another one creates.
    // Everything else, markers of other models included, is unchanged.
    QString broken(QString content) const;

private:
    QStringList m_texts;
};
