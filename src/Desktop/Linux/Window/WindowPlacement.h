// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <optional>

// Where a window that is brought to the user goes. Pure rules, in Qt's device-independent coordinates except
// where it says otherwise: there, a screen keeps its corner but is as large as its real pixels.
namespace WindowPlacement {

struct Screen
{
    QRect geometry;
    qreal devicePixelRatio = 1;
};

// The position in the list of the screen with that point, given in real pixels; nothing when it is on none.
std::optional<qsizetype> screenAt(const QPoint &pixel, const QList<Screen> &screens);

// The window's corner that puts it in the middle of the area; a window that is larger begins at the area's
// corner, so that its top can be reached.
QPoint centred(const QSize &window, const QRect &area);

} // namespace WindowPlacement
