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

// A snapshot of one element, as seen by a screen reader.
struct AccessibleElement
{
    // The AT-SPI states used here, by number.
    enum class State { Active = 1, Focused = 12, Sensitive = 24, Showing = 25, ReadOnly = 43 };

    bool has(State state) const { return (states >> static_cast<int>(state) & 1) != 0; }

    AtspiReference reference;
    QString role; // AT-SPI name, such as "push button"
    QString name;
    QString description;
    quint64 states = 0;
    QRect area; // on the screen
};

// The program with this process id on the accessibility bus, accessed through the backend's own calls.
// Thread: main; calls block while the event loop runs.
class AccessibleProgram
{
public:
    explicit AccessibleProgram(qint64 process);

    // All current elements, breadth-first, hidden ones included. Empty if the program is not on the bus or
    // too busy to answer.
    QList<AccessibleElement> elements();

    // Presses as a screen reader does; false if the element refuses.
    bool press(const AccessibleElement &element);

    // The text of a text field.
    QString contents(const AccessibleElement &field);

private:
    std::shared_ptr<AtspiApplication> application();

    qint64 m_process;
    std::shared_ptr<AtspiBus> m_bus = std::make_shared<AtspiBus>();
    std::shared_ptr<AtspiApplication> m_found; // locates the program; each walk uses a copy
};
