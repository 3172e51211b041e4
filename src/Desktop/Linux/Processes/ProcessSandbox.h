// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

// The sandbox that a process runs in, as the system tells it: what is inside cannot choose what is said here.
// Any thread; reads a few small files.
struct ProcessSandbox
{
    // The id of the application's desktop entry: "org.gnome.TextEditor" of a Flatpak, "firefox_firefox" of a
    // snap.
    QString application;
    // Of a Flatpak: the same for all processes that were started together; empty where it is not told.
    QString instance;

    // None for a process that is in no sandbox, or has ended. `processes` is where the system shows them.
    static std::optional<ProcessSandbox> of(qint64 process,
                                            const QString &processes = QStringLiteral("/proc"));

    friend bool operator==(const ProcessSandbox &, const ProcessSandbox &) = default;
};
