// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Window/RoundedArea.h"

#include <algorithm>
#include <cmath>

namespace {

// The inset at both ends of a row, counted from the edge.
int inset(int radius, int row)
{
    const double height = radius - row - 0.5;
    return static_cast<int>(std::ceil(radius - 0.5 - std::sqrt(radius * radius - height * height)));
}

} // namespace

QList<QRect> RoundedArea::rectangles(const QSize &size, int radius)
{
    if (size.isEmpty())
        return {};
    const int round = std::clamp(radius, 0, std::min(size.width(), size.height()) / 2);
    QList<QRect> result;
    int row = 0;
    for (; row < round && inset(round, row) > 0; ++row) {
        const int start = inset(round, row);
        const int width = size.width() - 2 * start;
        if (width < 1)
            continue;
        result.append(QRect(start, row, width, 1));
        result.append(QRect(start, size.height() - 1 - row, width, 1));
    }
    if (size.height() > 2 * row)
        result.append(QRect(0, row, size.width(), size.height() - 2 * row));
    return result;
}
