// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Shell/Appearance.h"

void Appearance::setDark(bool isDark)
{
    if (m_isDark == isDark)
        return;
    m_isDark = isDark;
    Q_EMIT isDarkChanged();
}
