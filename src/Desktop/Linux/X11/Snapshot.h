// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdint>
#include <optional>

// One window that the window manager manages. All texts are cleaned but the class names, which are compared.
struct X11Window
{
    enum class Kind {
        Application, // an ordinary window
        Dialog,      // belongs to another window of its application, or a utility window
        Shell,       // desktop, panels, notifications and the like: no application window
    };

    std::uint32_t identifier = 0;
    // As the server knows it. Where that cannot tell, minus a number that the windows of one client share.
    qint64 process = 0;
    // Which of the process's applications it belongs to, once that has been found out.
    QString part;
    QString title;
    QString instance;               // first part of WM_CLASS
    QString className;              // second part
    QString sandbox;                // the application whose sandbox the process is in, by its entry's id
    QString applicationIdentifier;  // the entry's id as the window tells it
    QString startupIdentifier;      // of the launch that led to this window, where told
    std::uint32_t transientFor = 0; // the window that it belongs to, where told
    Kind kind = Kind::Application;
    bool isMinimised = false;
    bool isModal = false;
    bool isOnCurrentDesktop = true;
    bool belongsInTaskBar = true;
    bool canBeClosed = true; // follows the polite request to close
    bool answersPings = false;

    bool isOf(qint64 owner, const QString &ownersPart) const
    {
        return process == owner && (ownersPart.isEmpty() || part == ownersPart);
    }
    bool isOrdinary() const { return kind != Kind::Shell; }
    bool isOnScreen() const { return isOrdinary() && !isMinimised && isOnCurrentDesktop; }
};

// What the window manager tells about all windows at one moment, and the rules that need no more than that.
// A plain value, used on any thread.
struct X11Snapshot
{
    QList<X11Window> windows;               // oldest first
    QList<std::uint32_t> stacking;          // front to back
    QList<std::uint32_t> recentlyActivated; // latest first
    std::optional<std::uint32_t> activeWindow;

    const X11Window *find(std::uint32_t identifier) const;
    const X11Window *active() const;

    // All windows, front to back.
    QList<X11Window> frontToBack() const;

    // The window that the user works with: the active one, or none where no application's window is active.
    // While it is one of `ownProcess`, the one that was active before it, and in doubt the one on top.
    const X11Window *frontmost(qint64 ownProcess) const;

    // The window of an application to bring to the front: the one used last, one that is visible first.
    // Without a part, the process is one application.
    const X11Window *windowToShow(qint64 process, const QString &part = {}) const;

    // The titles of what the user has in front of an application: a dialog that blocks the foremost window,
    // if there is one, and that window.
    QStringList titlesInFront(qint64 process) const;

    // The windows to close for the application to quit: its main windows, or what else it shows.
    QList<X11Window> windowsToClose(qint64 process, const QString &part = {}) const;

private:
    // Active first, then by how lately each was active, then front to back; every window once.
    QList<std::uint32_t> byRecency() const;
};
