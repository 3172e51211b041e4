// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QCoroTask>

#include <cstdint>

// The keyboard layouts that the user switches between on Plasma, from its service on the session bus. Thread:
// main.
class PlasmaLayouts
{
public:
    // The group of the active layout in the keymap; 0 if no service answers. Never throws.
    QCoro::Task<std::uint32_t> activeGroup();

private:
    BoundedQueue m_bus{QStringLiteral("desktop.layouts"), QStringLiteral("The session bus")};
};
