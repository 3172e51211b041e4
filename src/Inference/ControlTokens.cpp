// SPDX-License-Identifier: Apache-2.0
#include "Inference/ControlTokens.h"

#include "Base/Text.h"

#include <algorithm>
#include <utility>

namespace {

// Puts a blank behind the first character of every occurrence, overlapping ones included.
void breakEvery(QString &content, const QString &text)
{
    const qsizetype firstCharacter = text.at(0).isHighSurrogate() ? 2 : 1;
    for (qsizetype at = content.indexOf(text); at >= 0; at = content.indexOf(text, at + firstCharacter + 1))
        content.insert(at + firstCharacter, u' ');
}

} // namespace

ControlTokens::ControlTokens(QStringList texts) : m_texts(std::move(texts))
{
    m_texts.removeIf([](const QString &text) { return text.size() < 2; });
    // A broken text is longer than before, so what it could turn into is looked for later.
    std::sort(m_texts.begin(), m_texts.end(),
              [](const QString &left, const QString &right) { return left.size() < right.size(); });
}

QString ControlTokens::broken(QString content) const
{
    content = Text::withoutMarkers(content);
    for (const QString &text : m_texts)
        breakEvery(content, text);
    return content;
}
