// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QRect>
#include <QSize>

// The area of a window with rounded corners as a list of rectangles: one per row in the corners, and one for
// the rest. A pure function.
namespace RoundedArea {

// A corner pixel belongs to the area if its centre lies inside the circle. No rectangle is empty.
QList<QRect> rectangles(const QSize &size, int radius);

} // namespace RoundedArea
