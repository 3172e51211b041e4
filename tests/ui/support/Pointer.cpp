// SPDX-License-Identifier: Apache-2.0
#include "ui/support/Pointer.h"

#include <QHash>
#include <QProcess>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QByteArray xdotool(const QStringList &arguments)
{
    QProcess tool;
    tool.start(u"timeout"_s, QStringList{u"20"_s, u"xdotool"_s} + arguments);
    tool.waitForFinished();
    return tool.readAllStandardOutput();
}

QStringList move(QPoint position)
{
    return {u"mousemove"_s, QString::number(position.x()), QString::number(position.y())};
}

} // namespace

void Pointer::moveTo(QPoint position)
{
    xdotool(move(position));
}

void Pointer::click(QPoint position)
{
    xdotool(move(position) + QStringList{u"click"_s, u"1"_s});
}

void Pointer::doubleClick(QPoint position)
{
    xdotool(move(position) + QStringList{u"click"_s, u"--repeat"_s, u"2"_s, u"--delay"_s, u"20"_s, u"1"_s});
}

void Pointer::rightClick(QPoint position)
{
    xdotool(move(position) + QStringList{u"click"_s, u"3"_s});
}

void Pointer::wheelUp()
{
    xdotool({u"click"_s, u"4"_s});
}

// The window manager grabs the pointer a moment after the press; later steps are then seen by it.
void Pointer::drag(QPoint from, QPoint to)
{
    constexpr int steps = 20;
    QStringList arguments = move(from) + QStringList{u"mousedown"_s, u"1"_s};
    for (int step = 1; step <= steps; ++step)
        arguments += QStringList{u"sleep"_s, u"0.02"_s} + move(from + (to - from) * step / steps);
    xdotool(arguments + QStringList{u"sleep"_s, u"0.1"_s, u"mouseup"_s, u"1"_s});
}

QRect Pointer::areaOf(quint32 window)
{
    QHash<QByteArray, int> values;
    for (const QByteArray &line :
         xdotool({u"getwindowgeometry"_s, u"--shell"_s, QString::number(window)}).split('\n')) {
        const QList<QByteArray> parts = line.split('=');
        values.insert(parts.first(), parts.value(1).toInt());
    }
    return {values["X"], values["Y"], values["WIDTH"], values["HEIGHT"]};
}
