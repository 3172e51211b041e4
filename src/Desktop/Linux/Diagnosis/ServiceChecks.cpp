// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/ServiceChecks.h"

#include "Base/Text.h"

using namespace Qt::StringLiterals;

using Need = DiagnosticCheck::Need;

namespace {

const QString logInAgain = u"Log out and in again."_s;

DiagnosticCheck defaultApplication(const DiagnosticCheck &check,
                                   const ServiceChecks::DefaultApplication &application,
                                   const QString &missing, const QString &example)
{
    if (!application.isKnown)
        return check.broken(u"The list of applications can't be read in time."_s,
                            u"Look for a network drive that doesn't answer."_s);
    if (!application.entry)
        return check.absent(missing, u"Install one, for example the package %1, or choose one "
                                     "in the desktop's settings under default applications."_s.arg(example));
    return check.working(u"%1."_s.arg(application.entry->name));
}

// “A”, “B” and 3 more; long names are truncated.
QString listed(const QStringList &names)
{
    constexpr qsizetype most = 5;
    constexpr qsizetype longest = 60;
    QStringList quoted;
    for (const QString &name : names.first(std::min(names.size(), most)))
        quoted.append(u"“%1”"_s.arg(Text::firstCharacters(name, longest)));
    const QString text = quoted.join(u", "_s);
    const qsizetype others = names.size() - quoted.size();
    return others == 0 ? text : u"%1 and %2 more"_s.arg(text).arg(others);
}

} // namespace

DiagnosticCheck ServiceChecks::accessibility(Accessibility standing)
{
    const DiagnosticCheck check{u"accessibility"_s, u"Accessibility"_s};
    const QString letItStart =
        u"Have Orvane carry out a task: it switches this on. Then quit and open again what was open before."_s;
    switch (standing) {
    case Accessibility::NoSessionBus:
        return check.absent(u"There is no session bus that answers, and so no accessibility."_s,
                            u"Install the package dbus-user-session, then log out and in again."_s);
    case Accessibility::NotInstalled:
        return check.absent(u"The accessibility service is not installed."_s,
                            u"Install the package at-spi2-core, then log out and in again."_s);
    case Accessibility::NotRunning:
        return check.broken(u"The accessibility bus is not running."_s, letItStart);
    case Accessibility::Silent:
        return check.broken(u"The accessibility bus doesn't answer."_s, logInAgain);
    case Accessibility::Off:
        return check.broken(u"It is switched off: applications don't show their buttons and texts."_s,
                            letItStart);
    case Accessibility::Works:
        return check.working(u"The accessibility bus is on."_s);
    }
    Q_UNREACHABLE();
}

DiagnosticCheck ServiceChecks::browser(const DefaultApplication &application)
{
    const DiagnosticCheck check{u"browser"_s, u"Web browser"_s};
    return defaultApplication(check, application, u"No application opens web pages."_s, u"firefox-esr"_s);
}

DiagnosticCheck ServiceChecks::fileManager(const DefaultApplication &application)
{
    const DiagnosticCheck check{u"file-manager"_s, u"File manager"_s};
    return defaultApplication(check, application, u"No application opens folders."_s, u"thunar"_s);
}

DiagnosticCheck ServiceChecks::showFiles(const std::optional<BusExamination> &sessionBus)
{
    const DiagnosticCheck check{u"show-files"_s, u"Showing files"_s, Need::Comfort};
    const QString service = u"org.freedesktop.FileManager1"_s;
    if (sessionBus && (sessionBus->isRunning(service) || sessionBus->canStart(service)))
        return check.working(u"The file manager can show a file selected."_s);
    return check.limited(
        u"No file manager offers to show a file selected, so Orvane opens its folder instead."_s,
        u"Install a file manager that does, for example the package thunar or nautilus."_s);
}

DiagnosticCheck ServiceChecks::applications(const std::optional<Applications> &applications)
{
    const DiagnosticCheck check{u"applications"_s, u"Applications"_s, Need::Comfort};
    if (!applications)
        return check.limited(u"Which ones show their controls can't be told for now."_s,
                             u"See the line about accessibility."_s);
    if (!applications->hidden.isEmpty())
        return check.limited(u"These don't show their controls: %1."_s.arg(listed(applications->hidden)),
                             u"Quit them, then let Orvane open them."_s);
    if (!applications->silent.isEmpty())
        return check.limited(u"These aren't responding: %1."_s.arg(listed(applications->silent)),
                             u"Wait until they do, or end them."_s);
    if (applications->shown == 0)
        return check.working(u"None is open at the moment."_s);
    return check.working(u"All that are open show their controls."_s);
}
