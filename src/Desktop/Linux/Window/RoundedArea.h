// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QRect>
#include <QSize>

// The area of a window with round corners, in the rectangles that window systems want to have areas in: the
// corners row by row, and all between them. Pure; any thread.
namespace RoundedArea {

// Only pixels that lie inside the corners' circles by their middle belong to it. No rectangle is empty.
QList<QRect> rectangles(const QSize &size, int radius);

} // namespace RoundedArea
