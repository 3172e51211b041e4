// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// The texts that a model's tokenizer turns into control tokens (turn markers, end of text, ...). The rendered
// prompt is tokenised with those texts understood, because the template's own markers must work; so every
// content is made free of them first, or a window title could open a turn of its own.
// An immutable value; any thread.
class ControlTokens
{
public:
    ControlTokens() = default;
    explicit ControlTokens(const QStringList &texts);

    // The content with a blank put into every control-token text, those too that breaking another one leaves
    // behind; all else stays, markers of other models included.
    QString broken(QString content) const;

private:
    QStringList m_texts;
};
