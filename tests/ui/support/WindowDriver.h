// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/AccessibleProgram.h"
#include "applications/support/Screen.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>
#include <optional>

// The built program with its window, read and pressed through the accessibility bus and with real keys. Has
// its own folder for models and settings, and the private desktop's home. Every wait has a timeout. Thread:
// main; the destructor ends the program.
class WindowDriver
{
public:
    WindowDriver();
    ~WindowDriver();
    WindowDriver(const WindowDriver &) = delete;
    WindowDriver &operator=(const WindowDriver &) = delete;

    // These take effect at the next start. A null value removes the variable.
    void setVariable(const QString &name, const QString &value);
    // Where the program's error output goes; a null path means the test's own.
    void setErrorFile(const QString &path) { m_errorFile = path; }

    // Path of the default model; its folder exists.
    QString modelPath() const;
    void installPracticeModel();

    // `startShown` waits until the window is visible, focused, and watched for standstills.
    bool start(const QStringList &arguments = {});
    bool startShown();
    // Waits until the window exists, shown or hidden, and the program responds.
    bool waitForWindow();
    qint64 process() const { return m_program->processId(); }
    bool isRunning() const { return m_program && m_program->state() == QProcess::Running; }
    void signal(int number) const;

    // The event loop's standstills since the window came up in milliseconds, one per line; should be empty.
    QByteArray standstills() const;

    // The exit status, or nothing on a timeout or a crash.
    std::optional<int> waitForEnd();

    // Starts a second process, waits for its end and returns its exit status.
    std::optional<int> startOnceMore(const QStringList &arguments = {});

    // The visible elements at this moment.
    QList<AccessibleElement> shown();
    std::optional<AccessibleElement> find(const QString &role, const QString &name);
    bool shows(const QString &role, const QString &name) { return find(role, name).has_value(); }
    bool waitFor(const QString &role, const QString &name);
    bool waitForNone(const QString &role, const QString &name);
    QStringList texts(); // of labels, in tree order
    // Role and name of the focused element.
    QString focused();
    bool waitForFocus(const QString &name);
    // All visible elements as lines, for failure messages.
    QString described();

    // Waits for the control and presses it; false if it does not appear or refuses.
    bool press(const QString &role, const QString &name);
    // The same with the mouse, whether or not the control reacts.
    bool click(const QString &role, const QString &name);

    // The command field's text.
    QString fieldText();
    bool waitForFieldText(const QString &text);

    // Waits until no task runs, with a longer timeout for slow models.
    bool waitForEndOfRun();

    // The window as known to the window manager; nothing while hidden.
    std::optional<ScreenWindow> window() const;
    bool isActive() const;
    bool waitForActive() const;
    // Waits until the program has noticed that another one is active.
    bool waitForInactive();
    bool waitForHidden() const;

private:
    std::unique_ptr<QProcess> begun(const QStringList &arguments) const;
    bool isWatched() const;
    QString standstillsPath() const { return m_folder.filePath(QStringLiteral("standstills")); }

    QTemporaryDir m_folder;
    QString m_errorFile;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    std::unique_ptr<QProcess> m_program;
    std::optional<AccessibleProgram> m_accessible;
};

// AT-SPI names of the roles used.
namespace Role {

inline const QString button = QStringLiteral("push button");
inline const QString field = QStringLiteral("text");
inline const QString label = QStringLiteral("label");
inline const QString picker = QStringLiteral("combo box");
inline const QString menuItem = QStringLiteral("menu item");
inline const QString dialog = QStringLiteral("dialog");

} // namespace Role
