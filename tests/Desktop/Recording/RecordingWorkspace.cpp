// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingWorkspace.h"

#include "Base/Text.h"
#include "Desktop/PlatformError.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString shownName(const RunningApplication &application)
{
    return application.localizedName.value_or(u"an application without a name"_s);
}

} // namespace

ApplicationBundle RecordingWorkspace::install(const QString &name, const QString &folder)
{
    const QString entryName = name + u".app"_s;
    const ApplicationBundle bundle{folder + u'/' + entryName, name};
    const auto hasPath = [&folder](const ApplicationFolder &known) { return known.path == folder; };
    auto place = std::find_if(folders.begin(), folders.end(), hasPath);
    if (place == folders.end())
        place = folders.insert(folders.end(), {folder, {}});
    place->entries.append({entryName, bundle});
    return bundle;
}

RunningApplication RecordingWorkspace::start(const QString &name)
{
    const ApplicationBundle bundle{u"/Applications/%1.app"_s.arg(name), name};
    return start(bundle);
}

RunningApplication RecordingWorkspace::start(const ApplicationBundle &bundle)
{
    const RunningApplication application{++m_lastProcess, Text::cleaned(bundle.displayName), bundle, true};
    running.append(application);
    return application;
}

void RecordingWorkspace::makeFrontmost(const RunningApplication &application)
{
    frontmostProcess = application.processIdentifier;
}

std::optional<RunningApplication> RecordingWorkspace::frontmost() const
{
    for (const RunningApplication &application : running) {
        if (application.processIdentifier == frontmostProcess)
            return application;
    }
    return std::nullopt;
}

QCoro::Task<QList<RunningApplication>> RecordingWorkspace::runningApplications()
{
    co_await m_journal.begin(RecordedOperation::RunningApplications);
    // A plain `co_return` would move from the member.
    co_return std::as_const(running);
}

QCoro::Task<std::optional<RunningApplication>> RecordingWorkspace::frontmostApplication()
{
    co_await m_journal.begin(RecordedOperation::FrontmostApplication);
    co_return frontmost();
}

void RecordingWorkspace::addWindow(const QString &ownerName, const QString &name)
{
    constexpr qint64 otherProcess = 2;
    const std::optional<QString> title = name.isEmpty() ? std::nullopt : std::optional(name);
    windows.append({0, otherProcess, ownerName, title});
}

QCoro::Task<WorkspaceSnapshot> RecordingWorkspace::snapshot()
{
    co_await m_journal.begin(RecordedOperation::Snapshot);
    WorkspaceSnapshot snapshot;
    snapshot.frontmost = frontmost();
    snapshot.windows = windows;
    for (WindowDescription &window : snapshot.windows) {
        window.ownerName = Text::cleaned(window.ownerName);
        window.name = Text::cleaned(window.name);
    }
    co_return snapshot;
}

QCoro::Task<void> RecordingWorkspace::activate(RunningApplication application)
{
    co_await m_journal.begin(RecordedOperation::Activate);
    if (!isRunning(application.processIdentifier))
        throw PlatformError(u"“%1” isn't running."_s.arg(shownName(application)));
    m_journal.note(u"activate %1"_s.arg(shownName(application)));
    makeFrontmost(application);
}

QCoro::Task<void> RecordingWorkspace::terminate(RunningApplication application)
{
    co_await m_journal.begin(RecordedOperation::Terminate);
    m_journal.note(u"ask %1 to quit"_s.arg(shownName(application)));
    const qint64 process = application.processIdentifier;
    if (waitingToQuit.contains(process))
        co_return;
    running.removeIf(
        [process](const RunningApplication &other) { return other.processIdentifier == process; });
    if (frontmostProcess == process)
        frontmostProcess.reset();
}

QCoro::Task<bool> RecordingWorkspace::isTerminated(RunningApplication application)
{
    co_await m_journal.begin(RecordedOperation::IsTerminated);
    co_return !isRunning(application.processIdentifier);
}

QCoro::Task<QList<ApplicationFolder>> RecordingWorkspace::applicationFolders()
{
    co_await m_journal.begin(RecordedOperation::ApplicationFolders);
    co_return std::as_const(folders);
}

QCoro::Task<std::optional<ApplicationBundle>> RecordingWorkspace::defaultForRole(QString name)
{
    co_await m_journal.begin(RecordedOperation::DefaultForRole);
    const auto role = roles.constFind(Text::comparisonKey(name));
    if (role == roles.constEnd())
        co_return std::nullopt;
    co_return *role;
}

QCoro::Task<void> RecordingWorkspace::openApplication(ApplicationBundle application)
{
    co_await m_journal.begin(RecordedOperation::OpenApplication);
    m_journal.note(u"open application %1"_s.arg(application.location));
    bringForward(application);
}

QCoro::Task<bool> RecordingWorkspace::open(QString url)
{
    co_await m_journal.begin(RecordedOperation::OpenURL);
    m_journal.note(u"open %1"_s.arg(url));
    co_return opensURLs;
}

QCoro::Task<void> RecordingWorkspace::open(QString url, ApplicationBundle application)
{
    co_await m_journal.begin(RecordedOperation::OpenURLWithApplication);
    m_journal.note(u"open %1 with %2"_s.arg(url, application.location));
    bringForward(application);
}

QCoro::Task<void> RecordingWorkspace::reveal(QString path)
{
    co_await m_journal.begin(RecordedOperation::Reveal);
    m_journal.note(u"reveal %1"_s.arg(path));
}

bool RecordingWorkspace::isRunning(qint64 processIdentifier) const
{
    return std::any_of(running.begin(), running.end(),
                       [processIdentifier](const RunningApplication &application) {
                           return application.processIdentifier == processIdentifier;
                       });
}

void RecordingWorkspace::bringForward(const ApplicationBundle &application)
{
    for (const RunningApplication &candidate : std::as_const(running)) {
        if (candidate.bundle == application)
            return makeFrontmost(candidate);
    }
    makeFrontmost(start(application));
}
