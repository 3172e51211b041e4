// SPDX-License-Identifier: Apache-2.0
#include "Inference/ControlTokens.h"

#include "Base/Text.h"

namespace {

qsizetype sizeOfFirstCharacter(const QString &text)
{
    return !text.isEmpty() && text.at(0).isHighSurrogate() ? 2 : 1;
}

// Inserts a blank after the first character of every occurrence, overlapping ones included.
void breakEvery(QString &content, const QString &text)
{
    const qsizetype firstCharacter = sizeOfFirstCharacter(text);
    for (qsizetype at = content.indexOf(text); at >= 0; at = content.indexOf(text, at + firstCharacter + 1))
        content.insert(at + firstCharacter, u' ');
}

} // namespace

ControlTokens::ControlTokens(const QStringList &texts)
{
    for (const QString &text : texts) {
        // Trimmed, because a blank next to blanks would not break the text.
        const QString breakable = Text::trimmed(text, u" ");
        if (breakable.size() > sizeOfFirstCharacter(breakable))
            m_texts.append(breakable);
    }
}

QString ControlTokens::broken(QString content) const
{
    // Breaking one text may create another. This terminates: each blank widens a gap, and no text has gaps of
    // every width.
    qsizetype sizeBefore = 0;
    do {
        sizeBefore = content.size();
        for (const QString &text : m_texts)
            breakEvery(content, text);
    } while (content.size() != sizeBefore);
    return content;
}
