// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>
#include <QRect>

// The mouse pointer on the private desktop, and window positions. Thread: main.
namespace Pointer {

void moveTo(QPoint position);
void click(QPoint position);
void doubleClick(QPoint position);
void rightClick(QPoint position);
void wheelUp(); // one notch

// Drags with the left button in several steps.
void drag(QPoint from, QPoint to);

// The window's area on the screen without decorations.
QRect areaOf(quint32 window);

} // namespace Pointer
