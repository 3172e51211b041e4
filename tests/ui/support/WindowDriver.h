// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/support/Screen.h"
#include "ui/support/AccessibleProgram.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>
#include <optional>

// The built program with its window, driven as a person would: looked at and pressed through the
// accessibility bus, with real keys. It has a folder of its own for models and settings, and the private
// desktop's home. Whatever waits gives up after a test's patience. Main thread; ends the program when it
// goes.
class WindowDriver
{
public:
    WindowDriver();
    ~WindowDriver();
    WindowDriver(const WindowDriver &) = delete;
    WindowDriver &operator=(const WindowDriver &) = delete;

    // For starts from now on.
    void setVariable(const QString &name, const QString &value) { m_environment.insert(name, value); }

    // Where the program looks for the default model; the folder exists.
    QString modelPath() const;
    void installPracticeModel();

    // Starts the program; `startShown` waits until its window is up, has the keyboard, and is being watched
    // for standstills.
    bool start(const QStringList &arguments = {});
    bool startShown();
    // Waits until there is a window, shown or not, and the program answers.
    bool waitForWindow();
    qint64 process() const { return m_program->processId(); }
    bool isRunning() const { return m_program && m_program->state() == QProcess::Running; }
    void signal(int number) const;

    // How many milliseconds the program's event loop stood still since its window came up, one line for each
    // time; empty is right.
    QByteArray standstills() const;

    // Waits for the end by itself: the exit status, or none when it does not end, or not of its own will.
    std::optional<int> waitForEnd();

    // Starts the program once more and waits for the end of that process; its exit status.
    std::optional<int> startOnceMore(const QStringList &arguments = {});

    // What a person sees: what is shown, at this moment.
    QList<AccessibleElement> shown();
    std::optional<AccessibleElement> find(const QString &role, const QString &name);
    bool shows(const QString &role, const QString &name) { return find(role, name).has_value(); }
    bool waitFor(const QString &role, const QString &name);
    bool waitForNone(const QString &role, const QString &name);
    QStringList texts(); // the labels', top to bottom as the tree has them
    // Role and name of what has the keyboard focus.
    QString focused();
    bool waitForFocus(const QString &name);
    // All of it in lines, for a test's message.
    QString described();

    // Waits for the control, then presses it; false when it does not come or refuses.
    bool press(const QString &role, const QString &name);
    // The same with the mouse, whether or not the control does anything.
    bool click(const QString &role, const QString &name);

    // What stands in the command field.
    QString fieldText();
    bool waitForFieldText(const QString &text);

    // Waits, longer than for anything else, until no task runs any more: the model may be slow.
    bool waitForEndOfRun();

    // The program's window as the window manager knows it, none while it is hidden.
    std::optional<ScreenWindow> window() const;
    bool isActive() const;
    bool waitForActive() const;
    // Waits until the program itself has noticed that another one is in front.
    bool waitForInactive();
    bool waitForHidden() const;

private:
    std::unique_ptr<QProcess> begun(const QStringList &arguments) const;
    bool isWatched() const;
    QString standstillsPath() const { return m_folder.filePath(QStringLiteral("standstills")); }

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    std::unique_ptr<QProcess> m_program;
    std::optional<AccessibleProgram> m_accessible;
};

// The names that the accessibility protocol has for the roles of our controls.
namespace Role {

inline const QString button = QStringLiteral("push button");
inline const QString field = QStringLiteral("text");
inline const QString label = QStringLiteral("label");
inline const QString picker = QStringLiteral("combo box");
inline const QString menuItem = QStringLiteral("menu item");
inline const QString dialog = QStringLiteral("dialog");

} // namespace Role
