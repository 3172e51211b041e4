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
    // In a terminal program, AppKit and the main queue need Core Foundation's event dispatcher; without it,
    // the frontmost application would never update.
    qputenv("QT_EVENT_DISPATCHER_CORE_FOUNDATION", "1");
    // By default Qt activates every process with a window system, also one started in the background or one
    // that only forwards a request to the running instance, whose window would lose the focus. MacShell asks
    // for the Dock icon; bringing the window forward activates the program.
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

// macOS knows a program by its bundle.
QString Platform::integrate()
{
    return QStringLiteral("There is nothing to do on macOS.");
}

QString Platform::undoIntegration()
{
    return QStringLiteral("There is nothing to do on macOS.");
}

std::unique_ptr<ShellServices> Platform::connectToShell()
{
    return std::make_unique<MacShellServices>();
}

std::unique_ptr<ProgramInstance> Platform::programInstance()
{
    return std::make_unique<MacProgramInstance>();
}
