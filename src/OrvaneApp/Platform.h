// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Diagnosis.h"
#include "Desktop/ProgramInstance.h"
#include "Desktop/Shell/Shell.h"

#include <memory>
#include <optional>

// Owns the desktop services. Thread: main.
class DesktopServices
{
public:
    virtual ~DesktopServices() = default;

    // Valid for the life of this object.
    virtual Desktop desktop() = 0;
};

// Owns the services for the program's own window. Thread: main.
class ShellServices
{
public:
    virtual ~ShellServices() = default;

    // Valid for the life of this object.
    virtual Shell shell() = 0;
};

// Everything that differs between platforms; implemented in one file per platform, chosen by the build.
namespace Platform {

// Call first, before creating an application object.
void prepareProcess();

// Prepares the display for a window; false if there is none. Call before creating an application object.
bool prepareDisplay();

// Why no task can work in this session, as one sentence for the user; nothing if tasks can, or if there is no
// desktop. Needs no application object.
std::optional<QString> sessionObstacle();

// Throws PlatformError if there is no desktop.
std::unique_ptr<DesktopServices> connectToDesktop();

// Works without a desktop.
std::unique_ptr<Diagnosis> diagnosis();

// Makes this program known to the desktop, or undoes that. Return what to tell the user. Throw PlatformError.
// Need an application object.
QString integrate();
QString undoIntegration();

// Needs the application object.
std::unique_ptr<ShellServices> connectToShell();

// Call before creating the application object.
std::unique_ptr<ProgramInstance> programInstance();

} // namespace Platform
