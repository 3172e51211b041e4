// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/DisplayChecks.h"

using Need = DiagnosticCheck::Need;

namespace {

const QString bindAnotherKey =
    QStringLiteral("In the desktop's keyboard shortcuts, give a key of your choice "
                   "to the command: orvane --toggle");

} // namespace

DiagnosticCheck DisplayChecks::session(const Session &session, Server server)
{
    const DiagnosticCheck check{QStringLiteral("session"), QStringLiteral("Session")};
    const QString openTerminal = QStringLiteral("Start Orvane in a terminal on the desktop.");
    if (session.type == SessionType::Wayland)
        return check.broken(
            QStringLiteral("Orvane can't see or operate a Wayland desktop yet."),
            QStringLiteral("Log out, and choose the X11 (“Xorg”) session on the login screen."));
    if (server == Server::Silent)
        return check.broken(QStringLiteral("The X server of display %1 doesn't answer.").arg(session.display),
                            QStringLiteral("Log out and in again."));
    if (server == Server::Answers)
        return check.working(QStringLiteral("X11, display %1.").arg(session.display));
    if (session.display.isEmpty())
        return check.absent(QStringLiteral("There is no graphical desktop here."), openTerminal);
    return check.broken(QStringLiteral("No X server answers on display %1.").arg(session.display),
                        openTerminal);
}

DiagnosticCheck DisplayChecks::windowManager(const X11Examination &examination)
{
    const DiagnosticCheck check{QStringLiteral("window-manager"), QStringLiteral("Window manager")};
    if (!examination.windowManager)
        return check.absent(
            QStringLiteral("None is running: windows can't be found or brought to the front."),
            QStringLiteral("Log out and in again, or start one by its name, for example: xfwm4"));
    if (examination.windowManager->isEmpty())
        return check.working(QStringLiteral("One without a name is running."));
    return check.working(QStringLiteral("%1 is running.").arg(*examination.windowManager));
}

DiagnosticCheck DisplayChecks::keyboard(const X11Examination &examination)
{
    const DiagnosticCheck check{QStringLiteral("keyboard"), QStringLiteral("Keyboard")};
    if (examination.takesKeys)
        return check.working(QStringLiteral("Keys can be sent to applications."));
    return check.broken(
        QStringLiteral("The X server doesn't let keys be sent."),
        QStringLiteral("Use an X server with the extensions XTEST and XKEYBOARD, as Xorg is by itself."));
}

DiagnosticCheck DisplayChecks::spareKeys(const X11Examination &examination)
{
    const DiagnosticCheck check{QStringLiteral("spare-keys"), QStringLiteral("Other characters")};
    const qsizetype count = examination.spareKeys;
    if (count > 0)
        return check.working(
            count == 1 ? QStringLiteral("One spare key can type what the keyboard lacks.")
                       : QStringLiteral("%1 spare keys can type what the keyboard lacks.").arg(count));
    return check.broken(
        QStringLiteral("No key is spare: only the characters on the keyboard can be typed."),
        QStringLiteral("Choose another keyboard model or layout in the desktop's keyboard settings."));
}

DiagnosticCheck DisplayChecks::hotKey(const X11Examination &examination, Orvane orvane)
{
    const DiagnosticCheck check{QStringLiteral("hot-key"), QStringLiteral("Hot key"), Need::Comfort};
    if (examination.isHotKeyFree)
        return check.working(QStringLiteral("Alt+Space is free for Orvane."));
    if (orvane == Orvane::Runs)
        return check.working(
            QStringLiteral("Alt+Space is taken, most likely by the Orvane that is running."));
    return check.limited(QStringLiteral("Alt+Space is taken by another program; by which can't be told."),
                         bindAnotherKey);
}

DiagnosticCheck DisplayChecks::screenshot(const X11Examination &examination)
{
    const DiagnosticCheck check{QStringLiteral("screenshot"), QStringLiteral("Screenshots")};
    if (examination.picture.isEmpty())
        return check.broken(QStringLiteral("The X server hands out no picture of the screen."),
                            QStringLiteral("Set the screen to millions of colours (24 bits)."));
    return check.working(QStringLiteral("The screen has %1 × %2 points.")
                             .arg(examination.picture.width())
                             .arg(examination.picture.height()));
}
