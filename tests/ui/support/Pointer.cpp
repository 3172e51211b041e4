// SPDX-License-Identifier: Apache-2.0
#include "ui/support/Pointer.h"

#include "applications/support/Screen.h"
#include "ui/support/WaylandUserPointer.h"

#include <QProcess>
#include <QStringList>
#include <QThread>

using namespace Qt::StringLiterals;

namespace {

using Button = WaylandUserPointer::Button;

bool isOnX11()
{
    return Screen::session() == Screen::Session::X11;
}

WaylandUserPointer &waylandPointer()
{
    static WaylandUserPointer pointer;
    return pointer;
}

void xdotool(const QStringList &arguments)
{
    QProcess::execute(u"timeout"_s, QStringList{u"20"_s, u"xdotool"_s} + arguments);
}

QString numberOf(Button button)
{
    return button == Button::Left ? u"1"_s : u"3"_s;
}

void press(Button button)
{
    if (isOnX11())
        xdotool({u"mousedown"_s, numberOf(button)});
    else
        waylandPointer().press(button);
}

void release(Button button)
{
    if (isOnX11())
        xdotool({u"mouseup"_s, numberOf(button)});
    else
        waylandPointer().release(button);
}

void clickHere(Button button)
{
    press(button);
    release(button);
}

} // namespace

void Pointer::attach()
{
    if (!isOnX11())
        waylandPointer();
}

void Pointer::moveTo(QPoint position)
{
    if (isOnX11())
        xdotool({u"mousemove"_s, QString::number(position.x()), QString::number(position.y())});
    else
        waylandPointer().moveTo(position);
}

void Pointer::click(QPoint position)
{
    moveTo(position);
    clickHere(Button::Left);
}

void Pointer::doubleClick(QPoint position)
{
    click(position);
    clickHere(Button::Left);
}

void Pointer::rightClick(QPoint position)
{
    moveTo(position);
    clickHere(Button::Right);
}

void Pointer::wheelUp()
{
    if (isOnX11())
        xdotool({u"click"_s, u"4"_s});
    else
        waylandPointer().wheelUp();
}

// The window manager or compositor takes the pointer a moment after the press; later steps are then seen by
// it.
void Pointer::drag(QPoint from, QPoint to)
{
    constexpr int steps = 20;
    constexpr int pace = 20; // ms
    moveTo(from);
    press(Button::Left);
    for (int step = 1; step <= steps; ++step) {
        QThread::msleep(pace);
        moveTo(from + (to - from) * step / steps);
    }
    QThread::msleep(5 * pace);
    release(Button::Left);
}
