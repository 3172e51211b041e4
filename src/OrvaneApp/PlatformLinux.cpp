// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/OwnEntry.h"
#include "Desktop/Linux/Diagnosis/LinuxDiagnosis.h"
#include "Desktop/Linux/DisplayServices.h"
#include "Desktop/Linux/LinuxDesktop.h"
#include "Desktop/Linux/LinuxShell.h"
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/Window/LinuxDisplay.h"
#include "OrvaneApp/Platform.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

class LinuxDesktopServices : public DesktopServices
{
public:
    Desktop desktop() override { return m_desktop.desktop(); }

private:
    LinuxDesktop m_desktop;
};

class LinuxShellServices : public ShellServices
{
public:
    Shell shell() override { return m_shell.shell(); }

private:
    LinuxShell m_shell;
};

} // namespace

void Platform::prepareProcess() {}

bool Platform::prepareDisplay()
{
    return LinuxDisplay::prepare();
}

std::optional<QString> Platform::sessionObstacle()
{
    return DisplayServices::obstacleInEnvironment();
}

std::unique_ptr<DesktopServices> Platform::connectToDesktop()
{
    return std::make_unique<LinuxDesktopServices>();
}

std::unique_ptr<Diagnosis> Platform::diagnosis()
{
    return std::make_unique<LinuxDiagnosis>();
}

QString Platform::integrate()
{
    OwnEntry::write(QCoreApplication::applicationFilePath());
    return u"The desktop knows this program now, by %1. Start it again if it is running."_s.arg(
        OwnEntry::path());
}

QString Platform::undoIntegration()
{
    return OwnEntry::remove() ? u"%1 is removed."_s.arg(OwnEntry::path()) : u"There is nothing to remove."_s;
}

std::unique_ptr<ShellServices> Platform::connectToShell()
{
    return std::make_unique<LinuxShellServices>();
}

std::unique_ptr<ProgramInstance> Platform::programInstance()
{
    return std::make_unique<LinuxProgramInstance>();
}
