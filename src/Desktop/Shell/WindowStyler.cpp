// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Shell/WindowStyler.h"

void WindowStyler::setCompositing(bool isCompositing)
{
    if (m_isCompositing == isCompositing)
        return;
    m_isCompositing = isCompositing;
    Q_EMIT isCompositingChanged();
}
