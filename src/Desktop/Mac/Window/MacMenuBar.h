// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/MenuBar.h"

#include <memory>

// The menus that stand beside the application's own one, which Qt makes. There is but one window, and so no
// command for a new one. Main thread, with the application object there; nothing else sets a menu bar.
class MacMenuBar : public MenuBar
{
    Q_OBJECT

public:
    MacMenuBar();
    ~MacMenuBar() override;
    MacMenuBar(const MacMenuBar &) = delete;
    MacMenuBar &operator=(const MacMenuBar &) = delete;

private:
    struct Menus;
    std::unique_ptr<Menus> m_menus;
};
