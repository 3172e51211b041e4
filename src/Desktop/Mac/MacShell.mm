// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacShell.h"

#include <AppKit/AppKit.h>

MacShell::MacShell()
{
    [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
}

Shell MacShell::shell()
{
    return {m_hotKeys, m_appearance, m_windowStyler, m_menuBar, m_activity};
}
