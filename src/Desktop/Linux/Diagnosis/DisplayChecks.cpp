// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/DisplayChecks.h"

using namespace Qt::StringLiterals;

using Need = DiagnosticCheck::Need;

namespace {

const QString bindAnotherKey = u"In the desktop's keyboard shortcuts, give a key of your choice "
                               "to the command: orvane --toggle"_s;

DiagnosticCheck extension(const DiagnosticCheck &check, ExtensionStanding standing)
{
    const QString integrate = u"Run in a terminal: orvane integrate. Then log out and in again."_s;
    if (standing == ExtensionStanding::NeedsLogin)
        return check.broken(u"This version of Orvane's extension of GNOME Shell isn't running yet."_s,
                            u"Log out and in again."_s);
    if (standing == ExtensionStanding::IsOutdated)
        return check.broken(u"Orvane's extension of GNOME Shell is older than Orvane."_s, integrate);
    return check.broken(u"Orvane's extension of GNOME Shell isn't running."_s, integrate);
}

} // namespace

DiagnosticCheck DisplayChecks::session(const Session &session, Server server)
{
    const DiagnosticCheck check{u"session"_s, u"Session"_s};
    const QString openTerminal = u"Start Orvane in a terminal on the desktop."_s;
    if (session.type == SessionType::Wayland && session.access == Session::Access::Full)
        return check.working(u"Wayland, on a desktop that Orvane can work with."_s);
    if (session.access == Session::Access::NeedsExtension)
        return extension(check, session.extension);
    if (session.access == Session::Access::NeedsEntry)
        return check.broken(u"This desktop lets only programs that it knows see and operate it."_s,
                            u"Run in a terminal: orvane integrate. Then start Orvane again."_s);
    if (session.type == SessionType::Wayland)
        return check.broken(u"Orvane can't see or operate this Wayland desktop yet."_s,
                            u"Log out, and choose the X11 (“Xorg”) session on the login screen."_s);
    if (server == Server::Silent)
        return check.broken(u"The X server of display %1 doesn't answer."_s.arg(session.display),
                            u"Log out and in again."_s);
    if (server == Server::Answers)
        return check.working(u"X11, display %1."_s.arg(session.display));
    if (session.display.isEmpty())
        return check.absent(u"There is no graphical desktop here."_s, openTerminal);
    return check.broken(u"No X server answers on display %1."_s.arg(session.display), openTerminal);
}

DiagnosticCheck DisplayChecks::windowManager(const X11Examination &examination)
{
    const DiagnosticCheck check{u"window-manager"_s, u"Window manager"_s};
    if (!examination.windowManager)
        return check.absent(u"None is running: windows can't be found or brought to the front."_s,
                            u"Log out and in again, or start one by its name, for example: xfwm4"_s);
    if (examination.windowManager->isEmpty())
        return check.working(u"One without a name is running."_s);
    return check.working(u"%1 is running."_s.arg(*examination.windowManager));
}

DiagnosticCheck DisplayChecks::keyboard(const X11Examination &examination)
{
    const DiagnosticCheck check{u"keyboard"_s, u"Keyboard"_s};
    if (examination.takesKeys)
        return check.working(u"Keys can be sent to applications."_s);
    return check.broken(u"The X server doesn't let keys be sent."_s,
                        u"Use an X server with the extensions XTEST and XKEYBOARD, as Xorg is by itself."_s);
}

DiagnosticCheck DisplayChecks::spareKeys(const X11Examination &examination)
{
    const DiagnosticCheck check{u"spare-keys"_s, u"Other characters"_s};
    const qsizetype count = examination.spareKeys;
    if (count > 0)
        return check.working(count == 1 ? u"One spare key can type what the keyboard lacks."_s
                                        : u"%1 spare keys can type what the keyboard lacks."_s.arg(count));
    return check.broken(u"No key is spare: only the characters on the keyboard can be typed."_s,
                        u"Choose another keyboard model or layout in the desktop's keyboard settings."_s);
}

DiagnosticCheck DisplayChecks::hotKey(const X11Examination &examination, Orvane orvane)
{
    const DiagnosticCheck check{u"hot-key"_s, u"Hot key"_s, Need::Comfort};
    if (examination.isHotKeyFree)
        return check.working(u"Alt+Space is free for Orvane."_s);
    if (orvane == Orvane::Runs)
        return check.working(u"Alt+Space is taken, most likely by the Orvane that is running."_s);
    return check.limited(u"Alt+Space is taken by another program; by which can't be told."_s, bindAnotherKey);
}

DiagnosticCheck DisplayChecks::screenshot(const X11Examination &examination)
{
    const DiagnosticCheck check{u"screenshot"_s, u"Screenshots"_s};
    if (examination.picture.isEmpty())
        return check.broken(u"The X server hands out no picture of the screen."_s,
                            u"Set the screen to millions of colours (24 bits)."_s);
    return check.working(u"The screen has %1 × %2 points."_s.arg(examination.picture.width())
                             .arg(examination.picture.height()));
}
