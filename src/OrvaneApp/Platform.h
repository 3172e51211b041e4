// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <memory>

// Owns the services of the desktop that the program runs on. Main thread.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;

    // Good for as long as this object lives.
    virtual Desktop desktop() = 0;
};

// What differs from platform to platform; each has one file that implements this, chosen by the build.
namespace Platform {

// Throws PlatformError when there is no desktop to work on.
std::unique_ptr<DesktopServices> connectToDesktop();

} // namespace Platform
