// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>
#include <QRect>

// The mouse pointer on the private desktop, and where windows lie for it. Main thread.
namespace Pointer {

void moveTo(QPoint position);
void click(QPoint position);
void doubleClick(QPoint position);
void rightClick(QPoint position);
void wheelUp(); // one notch

// Presses the left button there, moves on to the other place in steps as a hand does, and lets go.
void drag(QPoint from, QPoint to);

// The window's place on the screen, without anything that the window manager puts round it.
QRect areaOf(quint32 window);

} // namespace Pointer
