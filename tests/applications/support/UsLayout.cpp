// SPDX-License-Identifier: Apache-2.0
#include "applications/support/UsLayout.h"

#include "applications/support/X11Names.h"

#include <QStringList>

#include <xkbcommon/xkbcommon.h>

namespace {

constexpr std::uint32_t kernelOffset = 8; // XKB's keycodes are the kernel's plus this

xkb_keymap *newKeymap()
{
    xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_rule_names names{};
    names.layout = "us";
    xkb_keymap *keymap = xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
    xkb_context_unref(context);
    return keymap;
}

std::uint32_t keyOf(const QString &name)
{
    const xkb_keysym_t symbol =
        xkb_keysym_from_name(X11Names::keyName(name).toUtf8().constData(), XKB_KEYSYM_NO_FLAGS);
    xkb_keymap *keymap = UsLayout::keymap();
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= xkb_keymap_max_keycode(keymap);
         ++code) {
        const xkb_keysym_t *symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap, code, 0, 0, &symbols) == 1 && *symbols == symbol)
            return code - kernelOffset;
    }
    qFatal("no key is called %s", qPrintable(name));
}

} // namespace

xkb_keymap *UsLayout::keymap()
{
    static xkb_keymap *keymap = newKeymap();
    return keymap;
}

QList<std::uint32_t> UsLayout::keysOf(const QString &combination)
{
    QList<std::uint32_t> keys;
    for (const QString &name : combination.split(u'+'))
        keys << keyOf(name);
    return keys;
}
