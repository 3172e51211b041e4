// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

// Where to show a window. Coordinates are Qt's device-independent ones unless stated. In native pixels, a
// screen has the same top-left corner but its size in pixels. Pure functions.
namespace WindowPlacement {

struct Screen
{
    QRect geometry;
    qreal devicePixelRatio = 1;
};

// The index of the screen that contains the point, given in native pixels; nothing if none does.
std::optional<qsizetype> screenAt(const QPoint &pixel, const QList<Screen> &screens);

// The top-left corner that centres the window in the area. A larger window is aligned with the area's
// top-left corner, so that its top stays reachable.
QPoint centred(const QSize &window, const QRect &area);

} // namespace WindowPlacement
