// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Diagnosis/ServiceChecks.h"

#include "Base/Text.h"

using Need = DiagnosticCheck::Need;

namespace {

const QString logInAgain = QStringLiteral("Log out and in again.");

DiagnosticCheck defaultApplication(const DiagnosticCheck &check,
                                   const ServiceChecks::DefaultApplication &application,
                                   const QString &missing, const QString &example)
{
    if (!application.isKnown)
        return check.broken(QStringLiteral("The list of applications can't be read in time."),
                            QStringLiteral("Look for a network drive that doesn't answer."));
    if (!application.entry)
        return check.absent(missing, QStringLiteral("Install one, for example the package %1, or choose one "
                                                    "in the desktop's settings under default applications.")
                                         .arg(example));
    return check.working(QStringLiteral("%1.").arg(application.entry->name));
}

// “A”, “B” and so many others; a hostile name is cut.
QString listed(const QStringList &names)
{
    constexpr qsizetype most = 5;
    constexpr qsizetype longest = 60;
    QStringList quoted;
    for (const QString &name : names.first(std::min(names.size(), most)))
        quoted.append(QStringLiteral("“%1”").arg(Text::firstCharacters(name, longest)));
    const QString text = quoted.join(QStringLiteral(", "));
    const qsizetype others = names.size() - quoted.size();
    return others == 0 ? text : QStringLiteral("%1 and %2 more").arg(text).arg(others);
}

} // namespace

DiagnosticCheck ServiceChecks::accessibility(Accessibility standing)
{
    const DiagnosticCheck check{QStringLiteral("accessibility"), QStringLiteral("Accessibility")};
    const QString letItStart = QStringLiteral(
        "Have Orvane carry out a task: it switches this on. Then quit and open again what was open before.");
    switch (standing) {
    case Accessibility::NoSessionBus:
        return check.absent(
            QStringLiteral("There is no session bus that answers, and so no accessibility."),
            QStringLiteral("Install the package dbus-user-session, then log out and in again."));
    case Accessibility::NotInstalled:
        return check.absent(QStringLiteral("The accessibility service is not installed."),
                            QStringLiteral("Install the package at-spi2-core, then log out and in again."));
    case Accessibility::NotRunning:
        return check.broken(QStringLiteral("The accessibility bus is not running."), letItStart);
    case Accessibility::Silent:
        return check.broken(QStringLiteral("The accessibility bus doesn't answer."), logInAgain);
    case Accessibility::Off:
        return check.broken(
            QStringLiteral("It is switched off: applications don't show their buttons and texts."),
            letItStart);
    case Accessibility::Works:
        return check.working(QStringLiteral("The accessibility bus is on."));
    }
    Q_UNREACHABLE();
}

DiagnosticCheck ServiceChecks::browser(const DefaultApplication &application)
{
    const DiagnosticCheck check{QStringLiteral("browser"), QStringLiteral("Web browser")};
    return defaultApplication(check, application, QStringLiteral("No application opens web pages."),
                              QStringLiteral("firefox-esr"));
}

DiagnosticCheck ServiceChecks::fileManager(const DefaultApplication &application)
{
    const DiagnosticCheck check{QStringLiteral("file-manager"), QStringLiteral("File manager")};
    return defaultApplication(check, application, QStringLiteral("No application opens folders."),
                              QStringLiteral("thunar"));
}

DiagnosticCheck ServiceChecks::showFiles(const std::optional<BusExamination> &sessionBus)
{
    const DiagnosticCheck check{QStringLiteral("show-files"), QStringLiteral("Showing files"), Need::Comfort};
    const QString service = QStringLiteral("org.freedesktop.FileManager1");
    if (sessionBus && (sessionBus->isRunning(service) || sessionBus->canStart(service)))
        return check.working(QStringLiteral("The file manager can show a file selected."));
    return check.limited(
        QStringLiteral("No file manager offers to show a file selected, so Orvane opens its folder instead."),
        QStringLiteral("Install a file manager that does, for example the package thunar or nautilus."));
}

DiagnosticCheck ServiceChecks::applications(const std::optional<Applications> &applications)
{
    const DiagnosticCheck check{QStringLiteral("applications"), QStringLiteral("Applications"),
                                Need::Comfort};
    if (!applications)
        return check.limited(QStringLiteral("Which ones show their controls can't be told for now."),
                             QStringLiteral("See the line about accessibility."));
    if (!applications->hidden.isEmpty())
        return check.limited(
            QStringLiteral("These don't show their controls: %1.").arg(listed(applications->hidden)),
            QStringLiteral("Quit them, then let Orvane open them."));
    if (!applications->silent.isEmpty())
        return check.limited(QStringLiteral("These aren't responding: %1.").arg(listed(applications->silent)),
                             QStringLiteral("Wait until they do, or end them."));
    if (applications->shown == 0)
        return check.working(QStringLiteral("None is open at the moment."));
    return check.working(QStringLiteral("All that are open show their controls."));
}
