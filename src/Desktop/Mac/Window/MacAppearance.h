// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Shell/Appearance.h"

#include <memory>

// The application's light or dark appearance in AppKit. Needs the application object. Thread: main.
class MacAppearance : public Appearance
{
    Q_OBJECT

public:
    MacAppearance();
    ~MacAppearance() override;
    MacAppearance(const MacAppearance &) = delete;
    MacAppearance &operator=(const MacAppearance &) = delete;

private:
    struct Observation;
    std::unique_ptr<Observation> m_observation;
};
