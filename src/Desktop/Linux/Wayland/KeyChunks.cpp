// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/KeyChunks.h"

#include "Desktop/Linux/Typing/VirtualKeys.h"
#include "Desktop/Linux/Wayland/Keymap.h"

#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype charactersPerChunk = 20;

QList<KeyStroke> chunksOf(const KeyStroke &stroke)
{
    if (stroke.text.isEmpty())
        return {stroke};
    QString text = stroke.text;
    text.replace(u"\r\n"_s, u"\n"_s); // a line break that must not be split
    const QList<uint> characters = text.toUcs4();
    QList<KeyStroke> chunks;
    for (qsizetype begin = 0; begin < characters.size(); begin += charactersPerChunk) {
        const qsizetype size = std::min(charactersPerChunk, characters.size() - begin);
        const auto *first = reinterpret_cast<const char32_t *>(characters.constData() + begin);
        chunks.append({0, {}, QString::fromUcs4(first, size)});
    }
    return chunks;
}

// The keys that strokes need.
class Needs
{
public:
    Needs() = default;
    explicit Needs(const KeyStroke &stroke)
    {
        const KeyboardLayout &own = WaylandKeymap::layout();
        for (const char32_t character : stroke.text.toUcs4()) {
            if (const auto key = own.characters.constFind(character); key != own.characters.constEnd())
                m_ownKeys.insert(key->code);
            else
                m_lentCharacters.insert(character);
        }
        if (const auto symbol = symbolOfVirtualKey(stroke.virtualKey); stroke.text.isEmpty() && symbol)
            m_ownKeys.insert(own.symbols.value(*symbol).code);
    }

    void add(const Needs &other)
    {
        m_ownKeys |= other.m_ownKeys;
        m_lentCharacters |= other.m_lentCharacters;
    }

    bool fitOneKeymap() const
    {
        return m_ownKeys.size() + m_lentCharacters.size() <= WaylandKeymap::layout().spareCodes.size();
    }

    // The layout with the other keys as spare ones.
    KeyboardLayout layout() const
    {
        KeyboardLayout layout = WaylandKeymap::layout();
        layout.spareCodes.removeIf([this](std::uint8_t code) { return m_ownKeys.contains(code); });
        return layout;
    }

private:
    QSet<std::uint8_t> m_ownKeys;
    QSet<char32_t> m_lentCharacters;
};

} // namespace

QList<TypingBatch> planKeyChunks(const QList<KeyStroke> &strokes)
{
    QList<TypingBatch> batches;
    QList<KeyStroke> chunks; // of the next batch
    Needs needs;
    const auto endBatch = [&batches, &chunks, &needs] {
        batches.append(planTyping(chunks, needs.layout()));
        chunks.clear();
        needs = Needs();
    };
    for (const KeyStroke &stroke : strokes) {
        for (const KeyStroke &chunk : chunksOf(stroke)) {
            const Needs own(chunk);
            Needs together = needs;
            together.add(own);
            if (!together.fitOneKeymap())
                endBatch();
            needs.add(own);
            chunks.append(chunk);
        }
    }
    endBatch();
    return batches;
}
