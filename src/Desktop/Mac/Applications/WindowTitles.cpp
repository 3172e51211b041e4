// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Applications/WindowTitles.h"

#include <algorithm>

bool WindowTitles::includeOthers(const QList<WindowDescription> &windows, qint64 ownProcessIdentifier)
{
    return std::any_of(windows.begin(), windows.end(), [=](const WindowDescription &window) {
        // The parts of the desktop itself, on other layers, always have their titles.
        const bool isOthers = window.layer == 0 && window.ownerProcessIdentifier != ownProcessIdentifier;
        return isOthers && !window.name.value_or(QString()).isEmpty();
    });
}
