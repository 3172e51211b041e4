// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Diagnosis.h"
#include "Desktop/ProgramInstance.h"
#include "Desktop/Shell.h"

#include <memory>
#include <optional>

// Owns the services of the desktop that the program runs on. Main thread.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;

    // Good for as long as this object lives.
    virtual Desktop desktop() = 0;
};

// Owns what the desktop offers to the program's own window. Main thread.
class ShellServices
{
public:
    virtual ~ShellServices() = default;

    // Good for as long as this object lives.
    virtual Shell shell() = 0;
};

// What differs from platform to platform; each has one file that implements this, chosen by the build.
namespace Platform {

// Call it first, before there is an application object.
void prepareProcess();

// Whether there is a screen to show a window on, which is made ready for it. Call it before there is an
// application object.
bool prepareDisplay();

// Why this session lets no task be carried out, in one sentence for the user; nothing where it does, or where
// there is no desktop at all. Needs no application object.
std::optional<QString> sessionObstacle();

// Throws PlatformError when there is no desktop to work on.
std::unique_ptr<DesktopServices> connectToDesktop();

// Needs no desktop.
std::unique_ptr<Diagnosis> diagnosis();

// Needs the application object.
std::unique_ptr<ShellServices> connectToShell();

// Make it before the application object.
std::unique_ptr<ProgramInstance> programInstance();

} // namespace Platform
