// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPoint>

// The mouse pointer on the private desktop. Thread: main.
namespace Pointer {

// Attaches the mouse, if the desktop has none yet. Programs take a moment to notice it.
void attach();

void moveTo(QPoint position);
void click(QPoint position);
void doubleClick(QPoint position);
void rightClick(QPoint position);
void wheelUp(); // one notch

// Drags with the left button in several steps.
void drag(QPoint from, QPoint to);

} // namespace Pointer
