// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pasting/PasteSteps.h"

#include "Desktop/Linux/Typing/VirtualKeys.h"

#include <algorithm>

#include <xkbcommon/xkbcommon.h>

namespace {

constexpr qsizetype keysPerStep = 20;

constexpr std::uint16_t virtualKeyV = 9;

// Texts that follow each other become one, so that no line is divided.
QList<KeyStroke> joined(const QList<KeyStroke> &strokes)
{
    QList<KeyStroke> result;
    for (const KeyStroke &stroke : strokes) {
        const bool continues = !stroke.text.isEmpty() && !result.isEmpty() && !result.last().text.isEmpty();
        if (continues)
            result.last().text += stroke.text;
        else
            result.append(stroke);
    }
    return result;
}

class Planner
{
public:
    Planner(const KeyboardLayout &layout, OwnCharacters ownCharacters)
        : m_layout(layout), m_ownCharacters(ownCharacters)
    {
        m_layout.spareCodes.clear(); // no key can be given another symbol
    }

    void add(const KeyStroke &stroke)
    {
        const QString text = stroke.text.isEmpty() ? missingCharacter(stroke) : stroke.text;
        if (text.isEmpty())
            addKeys(stroke);
        else
            addText(text);
    }

    QList<PasteStep> steps() const { return m_steps; }

private:
    // What the key types if the layout lacks it; empty for shortcuts.
    QString missingCharacter(const KeyStroke &stroke) const
    {
        const bool isShortcut = stroke.flags & ~EventFlags(EventFlag::Shift);
        const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(stroke.virtualKey);
        const char32_t character = symbol && !isShortcut ? xkb_keysym_to_utf32(*symbol) : 0;
        if (character == 0 || m_layout.symbols.contains(*symbol))
            return {};
        const QString typed = QString::fromUcs4(&character, 1);
        return stroke.flags.testFlag(EventFlag::Shift) ? typed.toUpper() : typed;
    }

    void addText(const QString &text)
    {
        QString line;
        char32_t previous = 0;
        for (const char32_t character : text.toUcs4()) {
            const bool endsPair = previous == U'\r' && character == U'\n';
            previous = character;
            if (endsPair)
                continue;
            if (isLineBreak(character) || character == U'\t') {
                addLine(line);
                line.clear();
                addKeys({0, {}, QString::fromUcs4(&character, 1)});
            } else {
                requireTypable(character);
                line += QString::fromUcs4(&character, 1);
            }
        }
        addLine(line);
    }

    void addLine(const QString &line)
    {
        if (line.isEmpty())
            return;
        const QList<uint> characters = line.toUcs4();
        const bool hasKeys = std::all_of(characters.cbegin(), characters.cend(), [this](uint character) {
            return m_layout.characters.contains(character);
        });
        if (hasKeys && m_ownCharacters == OwnCharacters::Typed)
            addKeys({0, {}, line});
        else
            m_steps.append({{}, line});
    }

    void addKeys(const KeyStroke &stroke)
    {
        for (const TypingBatch &batch : planTyping({stroke}, m_layout)) {
            for (const PlannedKey &key : batch.keys)
                addKey(key);
        }
    }

    void addKey(const PlannedKey &key)
    {
        const bool isNew =
            m_steps.isEmpty() || !m_steps.last().text.isEmpty() || m_steps.last().keys.size() == keysPerStep;
        if (isNew)
            m_steps.append(PasteStep());
        m_steps.last().keys.append(key);
    }

    KeyboardLayout m_layout;
    OwnCharacters m_ownCharacters;
    QList<PasteStep> m_steps;
};

} // namespace

QList<PasteStep> planPasteSteps(const QList<KeyStroke> &strokes, const KeyboardLayout &layout,
                                OwnCharacters ownCharacters)
{
    Planner planner(layout, ownCharacters);
    for (const KeyStroke &stroke : joined(strokes))
        planner.add(stroke);
    return planner.steps();
}

bool anyIsPasted(const QList<PasteStep> &steps)
{
    return std::any_of(steps.cbegin(), steps.cend(),
                       [](const PasteStep &step) { return !step.text.isEmpty(); });
}

QList<PlannedKey> planPasteShortcut(PasteShortcut shortcut, const KeyboardLayout &layout)
{
    KeyStroke stroke;
    stroke.virtualKey = virtualKeyV;
    stroke.flags = EventFlag::Control;
    stroke.flags.setFlag(EventFlag::Shift, shortcut == PasteShortcut::Terminal);
    return planPasteSteps({stroke}, layout, OwnCharacters::Typed).constFirst().keys;
}
