// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>

#include <optional>

// An application on disk. Only the backend interprets `location` (the path of a bundle or desktop entry),
// which identifies the application; `displayName` is the name shown to the user.
struct ApplicationBundle
{
    QString location;
    QString displayName;

    friend bool operator==(const ApplicationBundle &left, const ApplicationBundle &right)
    {
        return left.location == right.location;
    }
};

// The application's names besides the one in the user's language; empty if there are none. Unused on
// platforms where an application has only one name.
struct ApplicationNames
{
    QString english;    // untranslated name
    QString identifier; // desktop entry id, such as "org.xfce.mousepad"
    QString program;    // program name, such as "mousepad"
};

// A snapshot of a running application.
struct RunningApplication
{
    qint64 processIdentifier = 0;
    std::optional<QString> localizedName = {};
    std::optional<ApplicationBundle> bundle = {};
    // False for background and menu-bar-only processes, which users don't regard as applications.
    bool isRegular = true;
    // Distinguishes several applications in one process, for the backend only; empty if the process is one
    // application.
    QString part = {};
    ApplicationNames otherNames = {};

    // Whether both are the same application. If `other` has no part, it stands for the whole process.
    bool isPartOf(const RunningApplication &other) const
    {
        return processIdentifier == other.processIdentifier && (other.part.isEmpty() || part == other.part);
    }

    // The name for messages to the user.
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

// The applications as visible to the user at one moment.
struct WorkspaceSnapshot
{
    std::optional<RunningApplication> frontmost; // see Workspace::frontmostApplication
    QList<WindowDescription> windows;            // on the screen, front to back, without desktop elements
};

// The content of an application folder. On every platform, entries that are applications have names ending in
// ".app".
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

// Running and installed applications, and default handlers. All operations are bounded in time. Names are
// cleaned. Throws PlatformError. Thread: main.
class Workspace
{
public:
    virtual ~Workspace() = default;

    // In the platform's order.
    virtual QCoro::Task<QList<RunningApplication>> runningApplications() = 0;

    // The application the user works with; nothing if none is active. While this program's own window, a
    // palette, is active, this is the application that was active before it.
    virtual QCoro::Task<std::optional<RunningApplication>> frontmostApplication() = 0;

    // The frontmost application and the windows, read at the same moment.
    virtual QCoro::Task<WorkspaceSnapshot> snapshot() = 0;

    // Brings a running application to the front and waits (bounded) until it is. Throws if the application
    // has ended.
    virtual QCoro::Task<void> activate(RunningApplication application) = 0;

    // Asks the application to quit, like its Quit command; never kills it. The outcome is not reported.
    virtual QCoro::Task<void> terminate(RunningApplication application) = 0;
    virtual QCoro::Task<bool> isTerminated(RunningApplication application) = 0;

    // The application folders by precedence, without unreadable ones.
    virtual QCoro::Task<QList<ApplicationFolder>> applicationFolders() = 0;

    // The user's default application for the role with this well-known name, case-insensitive ("finder" → the
    // application that opens folders). Nothing if the name is not a role on this platform.
    virtual QCoro::Task<std::optional<ApplicationBundle>> defaultForRole(QString name) = 0;

    // Opens the application or brings it to the front. Throws if the platform cannot start it.
    virtual QCoro::Task<void> openApplication(ApplicationBundle application) = 0;

    // Opens the URL, unchanged, with its default handler. Returns false if there is none or it failed. URLs
    // are ASCII with a lower-case scheme; files have the scheme "file".
    virtual QCoro::Task<bool> open(QString url) = 0;

    // Opens the URL with the given application, which comes to the front. Throws on failure.
    virtual QCoro::Task<void> open(QString url, ApplicationBundle application) = 0;

    // Selects the file or folder in the file browser. Failures are ignored.
    virtual QCoro::Task<void> reveal(QString path) = 0;
};
