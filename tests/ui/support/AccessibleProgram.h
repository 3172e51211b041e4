// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bus.h"

#include <QCoroTask>
#include <QList>
#include <QRect>
#include <QString>

#include <memory>
#include <optional>

// One element of a program's windows, as a screen reader is told of it at one moment.
struct AccessibleElement
{
    // The numbers of the accessibility protocol's states that mean something here.
    enum class State { Active = 1, Focused = 12, Showing = 25, ReadOnly = 43 };

    bool has(State state) const { return (states >> static_cast<int>(state) & 1) != 0; }

    AtspiReference reference;
    QString role; // as the protocol names it: "push button"
    QString name;
    QString description;
    quint64 states = 0;
    QRect area; // on the screen
};

// The program with this process on the accessibility bus, through the backend's own calls. Main thread; every
// question waits for the answer, with the event loop running.
class AccessibleProgram
{
public:
    explicit AccessibleProgram(qint64 process);

    // Everything there is at this moment, breadth first, hidden things too. Nothing when the program is not
    // on the bus, or is too busy to answer.
    QList<AccessibleElement> elements();

    // What a screen reader's user does to press it; false when the element refuses.
    bool press(const AccessibleElement &element);

    // What stands in a text field.
    QString contents(const AccessibleElement &field);

private:
    std::shared_ptr<AtspiApplication> application();

    qint64 m_process;
    std::shared_ptr<AtspiBus> m_bus = std::make_shared<AtspiBus>();
    std::shared_ptr<AtspiApplication> m_found; // tells where the program is; each walk has its own copy
};
