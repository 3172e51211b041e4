// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

// Activates this program. Needs the application object. Thread: main.
class MacActivation
{
public:
    MacActivation();
    ~MacActivation();
    MacActivation(const MacActivation &) = delete;
    MacActivation &operator=(const MacActivation &) = delete;

    // Activates the program over any other application; if it is still launching, once that has finished.
    void request();

private:
    struct Launch;
    std::shared_ptr<Launch> m_launch;
};
