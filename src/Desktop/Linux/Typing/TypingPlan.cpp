// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/TypingPlan.h"

#include "Desktop/Linux/Typing/VirtualKeys.h"
#include "Desktop/PlatformError.h"

#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array allModifiers{ModifierKey::Control, ModifierKey::Alternate, ModifierKey::Shift,
                                  ModifierKey::ThirdLevel};

ModifierKeys modifiersOf(EventFlags flags)
{
    ModifierKeys modifiers;
    // Command means Control on this platform.
    modifiers.setFlag(ModifierKey::Control, flags & (EventFlag::Command | EventFlag::Control));
    modifiers.setFlag(ModifierKey::Alternate, flags & EventFlag::Alternate);
    modifiers.setFlag(ModifierKey::Shift, flags & EventFlag::Shift);
    return modifiers;
}

bool isCommand(ModifierKeys modifiers)
{
    return modifiers & (ModifierKey::Control | ModifierKey::Alternate);
}

bool isShiftedDigit(std::uint32_t symbol, const KeyboardLayout::Key &key)
{
    return symbol >= XKB_KEY_0 && symbol <= XKB_KEY_9 && key.modifiers == ModifierKey::Shift;
}

// Collects keys; starts a new batch when the spare keys are used up.
class Planner
{
public:
    explicit Planner(const KeyboardLayout &layout) : m_layout(layout) { m_batches.append(TypingBatch()); }

    void addVirtualKey(std::uint16_t virtualKey, EventFlags flags)
    {
        const std::optional<std::uint32_t> symbol = symbolOfVirtualKey(virtualKey);
        if (!symbol)
            throw PlatformError(u"This keyboard has no key for the code %1."_s.arg(virtualKey));
        addSymbol(*symbol, modifiersOf(flags));
    }

    void addText(const QString &text)
    {
        char32_t previous = 0;
        for (const char32_t character : text.toUcs4()) {
            const bool endsPair = previous == U'\r' && character == U'\n';
            if (!endsPair)
                addCharacter(character);
            previous = character;
        }
    }

    void endStroke()
    {
        if (!m_batches.last().keys.isEmpty())
            m_batches.last().keys.last().endsStroke = true;
    }

    QList<TypingBatch> batches() const { return m_batches; }

private:
    void addCharacter(char32_t character)
    {
        if (isLineBreak(character))
            return addSymbol(XKB_KEY_Return, {});
        if (character == U'\t')
            return addSymbol(XKB_KEY_Tab, {});
        requireTypable(character);
        const auto key = m_layout.characters.constFind(character);
        if (key == m_layout.characters.constEnd())
            addSpare(xkb_utf32_to_keysym(character), {});
        else
            add(*key, {});
    }

    void addSymbol(std::uint32_t symbol, ModifierKeys modifiers)
    {
        const auto key = m_layout.symbols.constFind(symbol);
        const auto otherGroup = m_layout.otherGroups.constFind(symbol);
        if (key != m_layout.symbols.constEnd() && isShiftedDigit(symbol, *key) && isCommand(modifiers))
            addLent(key->code, symbol, modifiers);
        else if (key != m_layout.symbols.constEnd())
            add(*key, modifiers);
        else if (otherGroup != m_layout.otherGroups.constEnd() && isCommand(modifiers))
            addLent(*otherGroup, symbol, modifiers);
        else
            addSpare(symbol, modifiers);
    }

    // Browsers identify shortcut keys by keycode and would ignore a spare one.
    void addLent(std::uint8_t code, std::uint32_t symbol, ModifierKeys modifiers)
    {
        // In a batch of its own, since other batches may need the key's regular keysyms.
        m_isBatchComplete = !m_batches.last().keys.isEmpty();
        batch().lentSymbols.insert(code, symbol);
        add({code, {}}, modifiers);
        m_isBatchComplete = true;
    }

    void addSpare(std::uint32_t symbol, ModifierKeys modifiers)
    {
        if (m_layout.spareCodes.isEmpty())
            throw PlatformError(u"The keyboard layout can't type this, and has no spare keys."_s);
        if (const auto code = spareCodeOf(symbol))
            return add({*code, {}}, modifiers);
        if (batch().lentSymbols.size() == m_layout.spareCodes.size())
            m_isBatchComplete = true;
        auto &lent = batch().lentSymbols;
        const std::uint8_t code = m_layout.spareCodes[lent.size()];
        lent.insert(code, symbol);
        add({code, {}}, modifiers);
    }

    std::optional<std::uint8_t> spareCodeOf(std::uint32_t symbol)
    {
        const auto &spares = batch().lentSymbols;
        const auto found = std::find(spares.cbegin(), spares.cend(), symbol);
        return found == spares.cend() ? std::nullopt : std::optional(found.key());
    }

    void add(const KeyboardLayout::Key &key, ModifierKeys modifiers)
    {
        const ModifierKeys all = key.modifiers | modifiers;
        for (const ModifierKey each : allModifiers) {
            if (all.testFlag(each) && !m_layout.modifierCodes.contains(each))
                throw PlatformError(u"The keyboard layout lacks a modifier key."_s);
        }
        batch().keys.append({key.code, all, false});
    }

    // The batch of the next key.
    TypingBatch &batch()
    {
        if (m_isBatchComplete)
            m_batches.append(TypingBatch());
        m_isBatchComplete = false;
        return m_batches.last();
    }

    const KeyboardLayout &m_layout;
    QList<TypingBatch> m_batches;
    bool m_isBatchComplete = false;
};

} // namespace

QList<std::uint8_t> codesOf(const PlannedKey &key, const KeyboardLayout &layout)
{
    QList<std::uint8_t> codes;
    for (const ModifierKey each : allModifiers) {
        if (key.modifiers.testFlag(each))
            codes.append(layout.modifierCodes.value(each));
    }
    codes.append(key.code);
    return codes;
}

bool isLineBreak(char32_t character)
{
    return character == U'\n' || character == U'\r' || character == 0x2028 || character == 0x2029;
}

void requireTypable(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    if (category == QChar::Other_Control || category == QChar::Other_Surrogate ||
        xkb_utf32_to_keysym(character) == XKB_KEY_NoSymbol)
        throw PlatformError(u"The text holds a character that no key can type (U+%1)."_s.arg(
            std::uint32_t(character), 4, 16, QLatin1Char('0')));
}

QList<TypingBatch> planTyping(const QList<KeyStroke> &strokes, const KeyboardLayout &layout)
{
    Planner planner(layout);
    for (const KeyStroke &stroke : strokes) {
        if (stroke.text.isEmpty())
            planner.addVirtualKey(stroke.virtualKey, stroke.flags);
        else
            planner.addText(stroke.text);
        planner.endStroke();
    }
    return planner.batches();
}
