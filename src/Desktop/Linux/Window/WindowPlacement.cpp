// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/WindowPlacement.h"

#include <algorithm>

std::optional<qsizetype> WindowPlacement::screenAt(const QPoint &pixel, const QList<Screen> &screens)
{
    const auto contains = [&pixel](const Screen &screen) {
        const QSize pixels = (QSizeF(screen.geometry.size()) * screen.devicePixelRatio).toSize();
        return QRect(screen.geometry.topLeft(), pixels).contains(pixel);
    };
    const auto found = std::ranges::find_if(screens, contains);
    return found == screens.end() ? std::nullopt : std::optional(found - screens.begin());
}

QPoint WindowPlacement::centred(const QSize &window, const QRect &area)
{
    const QSize room = (area.size() - window).expandedTo(QSize(0, 0));
    return area.topLeft() + QPoint(room.width() / 2, room.height() / 2);
}
