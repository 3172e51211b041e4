// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"

#include <QCoroTask>
#include <QList>
#include <QStringList>

#include <memory>

namespace Atspi {

// What an application tells of one of its windows.
struct WindowStanding
{
    QString name; // cleaned
    bool isActive = false;
};

// Positions of the windows, those in front first: the ones of these titles in the order of the titles, then
// the rest; of what is equal in that the active one, then the order that there was. A pure function.
QList<qsizetype> frontFirst(const QList<WindowStanding> &windows, const QStringList &titles);

// Whether a window bears one of the titles or says that it is active. A pure function.
bool isInFront(const WindowStanding &window, const QStringList &titles);

// An application's windows, those in front first.
struct OrderedWindows
{
    QList<AtspiReference> windows;
    bool isFirstInFront = false; // else nothing tells which one is
};

// Throws as `AtspiApplication::exchange` does. Main thread.
QCoro::Task<OrderedWindows> frontFirst(std::shared_ptr<AtspiApplication> application,
                                       QList<AtspiReference> windows, QStringList titles);

} // namespace Atspi
