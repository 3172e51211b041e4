// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

// The sandbox of a process, from system sources that the process itself can't forge. Reads a few small files.
// Any thread.
struct ProcessSandbox
{
    // The desktop entry id: "org.gnome.TextEditor" for a Flatpak, "firefox_firefox" for a snap.
    QString application;
    // The Flatpak instance, shared by all processes of one launch; empty if unknown.
    QString instance;

    // Nothing for a process that isn't sandboxed or has ended. `processes` is the path of procfs.
    static std::optional<ProcessSandbox> of(qint64 process,
                                            const QString &processes = QStringLiteral("/proc"));

    friend bool operator==(const ProcessSandbox &, const ProcessSandbox &) = default;
};
