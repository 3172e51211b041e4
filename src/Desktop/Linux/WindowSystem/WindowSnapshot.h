// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdint>
#include <optional>

// A window of an application. All texts are cleaned except `instance` and `className`, which are only
// compared.
struct DesktopWindow
{
    enum class Kind {
        Application, // an ordinary window
        Dialog,      // transient for another window, or a utility window
        Shell,       // desktop, panel, notification and the like
    };

    std::uint32_t identifier = 0;
    // As the window system reports it; if unknown, a negative number that tells applications apart.
    qint64 process = 0;
    // The application within the process, once determined.
    QString part;
    QString title;
    QString instance;               // on X11, the first string of WM_CLASS
    QString className;              // the second string of WM_CLASS, or the Wayland app_id
    QString sandbox;                // the process's sandboxed application: a desktop entry id
    QString applicationIdentifier;  // the desktop entry id set on the window
    QString startupIdentifier;      // of the launch that led to this window, if set
    std::uint32_t transientFor = 0; // 0 if unset
    Kind kind = Kind::Application;
    bool isMinimised = false;
    bool isModal = false;
    bool isOnCurrentDesktop = true;
    bool belongsInTaskBar = true;
    bool canBeClosed = true; // takes close requests
    bool answersPings = false;

    bool isOf(qint64 owner, const QString &ownersPart) const
    {
        return process == owner && (ownersPart.isEmpty() || part == ownersPart);
    }
    bool isOrdinary() const { return kind != Kind::Shell; }
    bool isOnScreen() const { return isOrdinary() && !isMinimised && isOnCurrentDesktop; }
};

// A snapshot of the window system's state, and the rules that depend on it alone. A plain value, usable on
// any thread.
struct WindowSnapshot
{
    QList<DesktopWindow> windows;           // oldest first
    QList<std::uint32_t> stacking;          // front to back
    QList<std::uint32_t> recentlyActivated; // latest first
    std::optional<std::uint32_t> activeWindow;

    const DesktopWindow *find(std::uint32_t identifier) const;
    const DesktopWindow *active() const;

    // All windows, front to back.
    QList<DesktopWindow> frontToBack() const;

    // The window the user works with: the active one, or null if no application window is active. If the
    // active window belongs to `ownProcess`, the one active before it, or else the topmost.
    const DesktopWindow *frontmost(qint64 ownProcess) const;

    // The application's window to bring to the front: the most recently used, visible ones preferred. An
    // empty `part` means the whole process.
    const DesktopWindow *windowToShow(qint64 process, const QString &part = {}) const;

    // The title of the application's front window, preceded by those of the modal dialogs that block it.
    QStringList titlesInFront(qint64 process, const QString &part = {}) const;

    // The titles that only the process's other applications have; none if `part` is empty.
    QStringList foreignTitles(qint64 process, const QString &part) const;

    // The windows to close to quit the application: its main windows, or the others if it has none.
    QList<DesktopWindow> windowsToClose(qint64 process, const QString &part = {}) const;

private:
    // The active window, then the recently active ones, latest first, then the rest front to back.
    QList<std::uint32_t> byRecency() const;
};
