// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Applications.h"

#include "Actions/ActionError.h"
#include "Actions/SessionGate.h"
#include "Base/Text.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// The time an application needs to start and take the focus.
constexpr auto launchSettlingTime = 700ms;

// The name with aliases resolved.
QString resolved(const QString &name)
{
    return Applications::aliases().value(Text::comparisonKey(name), name);
}

QCoro::Task<QList<RunningApplication>> regularApplications(Desktop desktop)
{
    QList<RunningApplication> applications = co_await desktop.workspace.runningApplications();
    applications.removeIf([](const RunningApplication &application) { return !application.isRegular; });
    co_return applications;
}

template <typename Condition>
std::optional<RunningApplication> first(const QList<RunningApplication> &applications, Condition condition)
{
    const auto found = std::find_if(applications.begin(), applications.end(), condition);
    return found == applications.end() ? std::nullopt : std::optional(*found);
}

// The kinds of names, by precedence.
enum class NameKind { UsersLanguage, English, Identifier, Program };
constexpr std::array nameKinds{NameKind::UsersLanguage, NameKind::English, NameKind::Identifier,
                               NameKind::Program};

QString nameOf(NameKind kind, const QString &name, const ApplicationNames &others)
{
    switch (kind) {
    case NameKind::UsersLanguage:
        return name;
    case NameKind::English:
        return others.english;
    case NameKind::Identifier:
        return others.identifier;
    case NameKind::Program:
        return others.program;
    }
    return QString();
}

// An identifier begins with the vendor ("org.gnome."), which is not part of the application's name.
QString lastPart(NameKind kind, const QString &name)
{
    return kind == NameKind::Identifier ? name.section(u'.', -1) : name;
}

bool isCalled(NameKind kind, const QString &name, const QString &target)
{
    return !name.isEmpty() && (Text::equals(name, target) || Text::equals(lastPart(kind, name), target));
}

std::optional<RunningApplication> named(const QList<RunningApplication> &applications, const QString &target)
{
    for (const NameKind kind : nameKinds) {
        const auto found = first(applications, [&](const RunningApplication &application) {
            const QString name = application.localizedName.value_or(QString());
            return isCalled(kind, nameOf(kind, name, application.otherNames), target);
        });
        if (found)
            return found;
    }
    return std::nullopt;
}

// Uses the original text, not the alias: "code" finds Xcode.
std::optional<RunningApplication> containing(const QList<RunningApplication> &applications,
                                             const QString &typed)
{
    for (const NameKind kind : nameKinds) {
        const auto found = first(applications, [&](const RunningApplication &application) {
            const QString name = application.localizedName.value_or(QString());
            return Text::contains(lastPart(kind, nameOf(kind, name, application.otherNames)), typed);
        });
        if (found)
            return found;
    }
    return std::nullopt;
}

// The first matching application in the folders, in order.
template <typename Condition>
std::optional<ApplicationBundle> firstInstalled(const QList<ApplicationFolder> &folders, NameKind kind,
                                                Condition matches)
{
    const QLatin1String suffix(".app");
    for (const ApplicationFolder &folder : folders) {
        for (const ApplicationFolder::Entry &entry : folder.entries) {
            if (!entry.name.endsWith(suffix))
                continue;
            if (matches(nameOf(kind, entry.name.chopped(suffix.size()), entry.otherNames)))
                return entry.bundle;
        }
    }
    return std::nullopt;
}

// Matches in all folders: an exact one anywhere precedes every partial one.
struct InstalledMatches
{
    std::optional<ApplicationBundle> exact;
    std::optional<ApplicationBundle> partial;
};

InstalledMatches installed(const QList<ApplicationFolder> &folders, const QString &target)
{
    InstalledMatches matches;
    for (const NameKind kind : nameKinds) {
        const auto isExact = [&](const QString &name) { return isCalled(kind, name, target); };
        const auto isPartial = [&](const QString &name) {
            return Text::contains(lastPart(kind, name), target);
        };
        if (!matches.exact)
            matches.exact = firstInstalled(folders, kind, isExact);
        if (!matches.partial)
            matches.partial = firstInstalled(folders, kind, isPartial);
    }
    return matches;
}

} // namespace

const QHash<QString, QString> &Applications::aliases()
{
    static const QHash<QString, QString> names{
        {u"vscode"_s, u"Visual Studio Code"_s},
        {u"vs code"_s, u"Visual Studio Code"_s},
        {u"code"_s, u"Visual Studio Code"_s},
        {u"chrome"_s, u"Google Chrome"_s},
        {u"brave"_s, u"Brave Browser"_s},
        {u"word"_s, u"Microsoft Word"_s},
        {u"excel"_s, u"Microsoft Excel"_s},
        {u"settings"_s, u"System Settings"_s},
        {u"system preferences"_s, u"System Settings"_s},
        {u"terminal"_s, u"Terminal"_s},
    };
    return names;
}

QCoro::Task<std::optional<RunningApplication>> Applications::running(QString name, Desktop desktop)
{
    const QList<RunningApplication> applications = co_await regularApplications(desktop);
    const QString target = resolved(name);
    const std::optional<RunningApplication> exact = named(applications, target);
    if (exact)
        co_return exact;
    const std::optional<ApplicationBundle> role = co_await desktop.workspace.defaultForRole(target);
    const auto playsRole = [&role](const RunningApplication &application) {
        return application.bundle && application.bundle == role;
    };
    const std::optional<RunningApplication> player = first(applications, playsRole);
    co_return player ? player : containing(applications, name);
}

QCoro::Task<std::optional<ApplicationBundle>> Applications::appURL(QString name, Desktop desktop)
{
    const std::optional<RunningApplication> application = co_await running(name, desktop);
    if (application && application->bundle)
        co_return application->bundle;
    const QString target = resolved(name);
    const QList<ApplicationFolder> folders = co_await desktop.workspace.applicationFolders();
    const InstalledMatches matches = installed(folders, target);
    if (matches.exact)
        co_return matches.exact;
    const std::optional<ApplicationBundle> role = co_await desktop.workspace.defaultForRole(target);
    co_return role ? role : matches.partial;
}

QCoro::Task<ApplicationBundle> Applications::foundApplication(QString name, Desktop desktop)
{
    const std::optional<ApplicationBundle> bundle = co_await appURL(name, desktop);
    if (!bundle)
        throw ActionError(u"Couldn't find an app called “%1”."_s.arg(name));
    co_return *bundle;
}

QCoro::Task<QString> Applications::launch(QString name, Desktop desktop)
{
    const ApplicationBundle bundle = co_await foundApplication(name, desktop);
    co_await desktop.workspace.openApplication(bundle);
    co_await desktop.clock.sleep(launchSettlingTime);
    co_return bundle.displayName;
}

QCoro::Task<void> Applications::returnTo(RunningApplication application, Desktop desktop)
{
    co_await SessionGate::requireUnlocked(desktop);
    const bool isGone = co_await desktop.workspace.isTerminated(application);
    if (isGone)
        throw ActionError(u"“%1” is no longer open, so nothing was done."_s.arg(application.shownName()));
    co_await desktop.workspace.activate(application);
}
