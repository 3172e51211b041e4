// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

// An application on disk. `location` means something to the backend only (a bundle's path, a desktop entry's
// path); `displayName` is what the user knows it by. Two values with the same location are the same
// application.
struct ApplicationBundle
{
    QString location;
    QString displayName;

    friend bool operator==(const ApplicationBundle &left, const ApplicationBundle &right)
    {
        return left.location == right.location;
    }
};

// What an application answers to besides its name in the user's language; empty where there is nothing else.
// Platforms whose applications have one name only leave this out.
struct ApplicationNames
{
    QString english;    // the name before it was translated
    QString identifier; // of its desktop entry: "org.xfce.mousepad"
    QString program;    // "mousepad"
};

// A snapshot of a running application.
struct RunningApplication
{
    qint64 processIdentifier = 0;
    std::optional<QString> localizedName;
    std::optional<ApplicationBundle> bundle;
    // False for background and menu-bar-only processes, which the user does not think of as applications.
    bool isRegular = true;
    // Tells the applications of one process apart, for the backend only; empty: the process is one
    // application.
    QString part = {};
    ApplicationNames otherNames = {};

    // Whether both are one application. Without a part, the other one is its whole process.
    bool isPartOf(const RunningApplication &other) const
    {
        return processIdentifier == other.processIdentifier && (other.part.isEmpty() || part == other.part);
    }

    // For sentences to the user.
    QString shownName() const { return localizedName.value_or(QStringLiteral("The application")); }
};

// One window on the screen. Names are cleaned text.
struct WindowDescription
{
    std::optional<int> layer; // 0: an ordinary application window
    qint64 ownerProcessIdentifier = 0;
    std::optional<QString> ownerName;
    std::optional<QString> name;
};

// What the user sees of the applications at one moment.
struct WorkspaceSnapshot
{
    std::optional<RunningApplication> frontmost; // see Workspace::frontmostApplication
    QList<WindowDescription> windows;            // on the screen, front to back, without desktop elements
};

// One application folder, as listed. Entry names end in ".app" where they stand for an application, on every
// platform, so that the scanning rule is the same everywhere.
struct ApplicationFolder
{
    struct Entry
    {
        QString name;
        ApplicationBundle bundle;
        ApplicationNames otherNames = {};
    };
    QString path;
    QList<Entry> entries;
};

// The applications of the desktop, running and installed, and what opens what.
// Called on the main thread; every answer is bounded in time. Names are cleaned text. Failures:
// PlatformError.
class Workspace
{
public:
    virtual ~Workspace() = default;

    // In the platform's order.
    virtual QCoro::Task<QList<RunningApplication>> runningApplications() = 0;

    // The application that the user works with. Our own window is a palette and never the answer: while it is
    // active, this is the application that was active before it. None while no application is active.
    virtual QCoro::Task<std::optional<RunningApplication>> frontmostApplication() = 0;

    // The frontmost application and the windows, both read at the same moment.
    virtual QCoro::Task<WorkspaceSnapshot> snapshot() = 0;

    // Brings a running application back to the front and waits (bounded) until it is. Throws when it is gone.
    virtual QCoro::Task<void> activate(RunningApplication application) = 0;

    // The polite request, the same as choosing Quit; never a forced end. Whether it is followed is not told.
    virtual QCoro::Task<void> terminate(RunningApplication application) = 0;
    virtual QCoro::Task<bool> isTerminated(RunningApplication application) = 0;

    // The application folders in the order of precedence; unreadable ones are left out.
    virtual QCoro::Task<QList<ApplicationFolder>> applicationFolders() = 0;

    // The user's default application for the role that a well-known name stands for ("finder" → the
    // application that opens folders), or none if the name is no role here. `name` in any letter case.
    virtual QCoro::Task<std::optional<ApplicationBundle>> defaultForRole(QString name) = 0;

    // Opens, or brings forward, the application. Throws when the platform cannot start it.
    virtual QCoro::Task<void> openApplication(ApplicationBundle application) = 0;

    // The default handler opens the URL, which reaches it letter for letter; false when there is no handler
    // or it failed. A file's URL has the scheme "file". URLs are in ASCII,
    // their scheme in lower case.
    virtual QCoro::Task<bool> open(QString url) = 0;

    // The given application opens the URL and comes to the front. Throws when the platform cannot.
    virtual QCoro::Task<void> open(QString url, ApplicationBundle application) = 0;

    // Shows the file or folder, selected, in the file browser. A failure is silent.
    virtual QCoro::Task<void> reveal(QString path) = 0;
};
