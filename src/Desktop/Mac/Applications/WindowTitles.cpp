// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/WindowTitles.h"

#include <algorithm>

bool WindowTitles::includeOthers(const QList<WindowDescription> &windows, qint64 ownProcessIdentifier)
{
    return std::any_of(windows.begin(), windows.end(), [=](const WindowDescription &window) {
        // Desktop elements, on other layers, always have titles.
        const bool isOthers = window.layer == 0 && window.ownerProcessIdentifier != ownProcessIdentifier;
        return isOthers && !window.name.value_or(QString()).isEmpty();
    });
}
