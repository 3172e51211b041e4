// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/KeymapLayout.h"

#include <algorithm>

namespace {

// The bits of real modifiers, the same in every keymap.
constexpr xkb_mod_mask_t shift = 1U << 0;
constexpr xkb_mod_mask_t thirdLevel = 1U << 7;

// Converts a keymap to a layout, by group and modifier combination.
class LayoutReader
{
public:
    explicit LayoutReader(xkb_keymap *keymap) : m_keymap(keymap), m_state(xkb_state_new(keymap)) {}

    KeyboardLayout read(xkb_layout_index_t group)
    {
        m_layout.groupCount = std::uint8_t(std::max(1u, xkb_keymap_num_layouts(m_keymap)));
        addKeys(group, 0, {});
        addModifierKey(ModifierKey::Shift, {XKB_KEY_Shift_L, XKB_KEY_Shift_R});
        addModifierKey(ModifierKey::Control, {XKB_KEY_Control_L, XKB_KEY_Control_R});
        addModifierKey(ModifierKey::Alternate, {XKB_KEY_Alt_L, XKB_KEY_Alt_R, XKB_KEY_Meta_L});
        addModifierKey(ModifierKey::ThirdLevel, {XKB_KEY_ISO_Level3_Shift});
        addKeys(group, shift, ModifierKey::Shift);
        if (m_layout.modifierCodes.contains(ModifierKey::ThirdLevel)) {
            addKeys(group, thirdLevel, ModifierKey::ThirdLevel);
            addKeys(group, thirdLevel | shift, ModifierKey::ThirdLevel | ModifierKey::Shift);
        }
        for (xkb_layout_index_t other = 0; other < xkb_keymap_num_layouts(m_keymap); ++other)
            addOtherGroup(other);
        addSpareCodes();
        return m_layout;
    }

private:
    // The key's keysym in the state set by `set`; none for the keypad, which depends on Num Lock.
    xkb_keysym_t symbolOf(xkb_keycode_t code) const
    {
        const xkb_keysym_t symbol = xkb_state_key_get_one_sym(m_state.get(), code);
        const bool isKeypad = symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
        return isKeypad ? xkb_keysym_t(XKB_KEY_NoSymbol) : symbol;
    }

    void set(xkb_layout_index_t group, xkb_mod_mask_t mask)
    {
        xkb_state_update_mask(m_state.get(), mask, 0, 0, 0, 0, group);
    }

    xkb_keycode_t firstCode() const { return xkb_keymap_min_keycode(m_keymap); }
    xkb_keycode_t lastCode() const { return std::min<xkb_keycode_t>(xkb_keymap_max_keycode(m_keymap), 255); }

    // Adds what the keys type with these modifiers. The first key for a keysym is kept: calls start with the
    // fewest modifiers, and the main block has the lower keycodes.
    void addKeys(xkb_layout_index_t group, xkb_mod_mask_t mask, ModifierKeys modifiers)
    {
        set(group, mask);
        for (xkb_keycode_t code = firstCode(); code <= lastCode(); ++code) {
            const xkb_keysym_t symbol = symbolOf(code);
            if (symbol == XKB_KEY_NoSymbol)
                continue;
            const KeyboardLayout::Key key{std::uint8_t(code), modifiers};
            if (!m_layout.symbols.contains(symbol))
                m_layout.symbols.insert(symbol, key);
            const char32_t character = xkb_keysym_to_utf32(symbol);
            if (character != 0 && !m_layout.characters.contains(character))
                m_layout.characters.insert(character, key);
        }
    }

    void addModifierKey(ModifierKey modifier, std::initializer_list<std::uint32_t> symbols)
    {
        for (const std::uint32_t symbol : symbols) {
            const auto key = m_layout.symbols.constFind(symbol);
            if (key != m_layout.symbols.constEnd() && key->modifiers == ModifierKeys())
                m_layout.modifierCodes.insert(modifier, key->code);
            if (m_layout.modifierCodes.contains(modifier))
                return;
        }
    }

    void addOtherGroup(xkb_layout_index_t group)
    {
        set(group, 0);
        for (xkb_keycode_t code = firstCode(); code <= lastCode(); ++code) {
            const xkb_keysym_t symbol = symbolOf(code);
            if (symbol != XKB_KEY_NoSymbol && !m_layout.symbols.contains(symbol) &&
                !m_layout.otherGroups.contains(symbol))
                m_layout.otherGroups.insert(symbol, std::uint8_t(code));
        }
    }

    void addSpareCodes()
    {
        for (xkb_keycode_t code = firstCode(); code <= lastCode(); ++code) {
            if (xkb_keymap_num_layouts_for_key(m_keymap, code) == 0)
                m_layout.spareCodes.append(std::uint8_t(code));
        }
    }

    xkb_keymap *m_keymap;
    XkbPointer<xkb_state> m_state;
    KeyboardLayout m_layout;
};

} // namespace

KeyboardLayout layoutOf(xkb_keymap *keymap, std::uint32_t group)
{
    return LayoutReader(keymap).read(group);
}
