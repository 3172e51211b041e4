// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

// The program's menu in the desktop's menu bar. On platforms without one, this class itself is used and emits
// nothing. Thread: main.
class MenuBar : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void clearHistoryChosen();
};
