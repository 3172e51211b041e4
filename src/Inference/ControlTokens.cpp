// SPDX-License-Identifier: Apache-2.0
#include "Inference/ControlTokens.h"

#include "Base/Text.h"

namespace {

qsizetype sizeOfFirstCharacter(const QString &text)
{
    return !text.isEmpty() && text.at(0).isHighSurrogate() ? 2 : 1;
}

// Puts a blank behind the first character of every occurrence, overlapping ones included.
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
        // A blank beside blanks parts nothing: what stands between those at the ends is broken.
        const QString breakable = Text::trimmed(text, u" ");
        if (breakable.size() > sizeOfFirstCharacter(breakable))
            m_texts.append(breakable);
    }
}

QString ControlTokens::broken(QString content) const
{
    // What breaking one leaves behind may be another one. It comes to an end: each blank makes a gap wider,
    // and no text has gaps of every width.
    qsizetype sizeBefore = 0;
    do {
        sizeBefore = content.size();
        for (const QString &text : m_texts)
            breakEvery(content, text);
    } while (content.size() != sizeBefore);
    return content;
}
