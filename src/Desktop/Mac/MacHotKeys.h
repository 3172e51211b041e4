// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/HotKeys.h"

// Hot keys of the Carbon event manager, each for this program alone. A key that another program has for
// itself alone is that program's. Main thread.
class MacHotKeys : public HotKeys
{
public:
    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;
};
