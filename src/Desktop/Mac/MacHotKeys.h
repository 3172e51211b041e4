// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/HotKeys.h"

// Exclusive hot keys through the Carbon event manager. Registration fails if another program holds the key
// exclusively. Thread: main.
class MacHotKeys : public HotKeys
{
public:
    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;
};
