// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/MenuBar.h"

#include <memory>

// The menus besides the application menu, which Qt creates. Has no command for a new window. Needs the
// application object; nothing else may set a menu bar. Thread: main.
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
