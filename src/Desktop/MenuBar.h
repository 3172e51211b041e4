// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

// The desktop's own menu bar for the program: tells which of the program's commands the user chose there.
// Where desktops have no such thing, this very class serves, and nothing is ever chosen. Main thread.
class MenuBar : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void clearHistoryChosen();
};
