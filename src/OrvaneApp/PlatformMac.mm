// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/MacDesktop.h"
#include "Desktop/Mac/MacDiagnosis.h"
#include "Desktop/Mac/MacShell.h"
#include "Desktop/Mac/Session/MacProgramInstance.h"
#include "Desktop/Mac/Window/MacDisplay.h"
#include "OrvaneApp/Platform.h"

namespace {

class MacDesktopServices : public DesktopServices
{
public:
    Desktop desktop() override { return m_desktop.desktop(); }

private:
    MacDesktop m_desktop;
};

class MacShellServices : public ShellServices
{
public:
    Shell shell() override { return m_shell.shell(); }

private:
    MacShell m_shell;
};

} // namespace

void Platform::prepareProcess()
{
    // Without it, the event loop of a program in the terminal would let neither AppKit nor the main queue do
    // anything, and who is in front would never change.
    qputenv("QT_EVENT_DISPATCHER_CORE_FOUNDATION", "1");
    // Left to itself, Qt makes every process with a window system the active one: also one that is to stay in
    // the background, and one that only hands a request over to the instance that is running, whose window
    // would then no longer be the one that the user is in. MacShell asks for the place in the Dock, and
    // whoever brings the window forward for the focus.
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
}

bool Platform::prepareDisplay()
{
    return MacDisplay::isPresent();
}

std::optional<QString> Platform::sessionObstacle()
{
    return std::nullopt;
}

std::unique_ptr<DesktopServices> Platform::connectToDesktop()
{
    return std::make_unique<MacDesktopServices>();
}

std::unique_ptr<Diagnosis> Platform::diagnosis()
{
    return std::make_unique<MacDiagnosis>();
}

std::unique_ptr<ShellServices> Platform::connectToShell()
{
    return std::make_unique<MacShellServices>();
}

std::unique_ptr<ProgramInstance> Platform::programInstance()
{
    return std::make_unique<MacProgramInstance>();
}
