// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Applications/OwnEntry.h"
#include "Desktop/Linux/Diagnosis/LinuxDiagnosis.h"
#include "Desktop/Linux/DisplayServices.h"
#include "Desktop/Linux/HotKeys/HotKeyRefusal.h"
#include "Desktop/Linux/LinuxDesktop.h"
#include "Desktop/Linux/LinuxShell.h"
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/ShellExtension/ExtensionFiles.h"
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
    return LinuxDisplay::prepare([] { return !DisplayServices::obstacleInEnvironment(); });
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
    const QString program = QCoreApplication::applicationFilePath();
    OwnEntry::write(program);
    HotKeyRefusal::forget();
    const QString known =
        u"The desktop knows this program now, by %1. Start it again if it is running."_s.arg(
            OwnEntry::path());
    if (!ExtensionFiles::areUseful())
        return known;
    ExtensionFiles::write(program);
    return known + u" The extension of GNOME Shell is in %1. Log out and in again to use it."_s.arg(
                       ExtensionFiles::folder());
}

QString Platform::undoIntegration()
{
    QStringList removed;
    if (OwnEntry::remove())
        removed.append(OwnEntry::path());
    if (ExtensionFiles::areUseful() && ExtensionFiles::remove())
        removed.append(ExtensionFiles::folder());
    return removed.isEmpty() ? u"There is nothing to remove."_s
                             : u"Removed: %1."_s.arg(removed.join(u", "_s));
}

std::unique_ptr<ShellServices> Platform::connectToShell()
{
    return std::make_unique<LinuxShellServices>();
}

std::unique_ptr<ProgramInstance> Platform::programInstance()
{
    return std::make_unique<LinuxProgramInstance>();
}
