// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

// Makes the program the active one. Main thread, with the application object there.
class MacActivation
{
public:
    MacActivation();
    ~MacActivation();
    MacActivation(const MacActivation &) = delete;
    MacActivation &operator=(const MacActivation &) = delete;

    // In front of whatever application is active now; while the program is still being launched, as soon as
    // it is.
    void request();

private:
    struct Launch;
    std::shared_ptr<Launch> m_launch;
};
