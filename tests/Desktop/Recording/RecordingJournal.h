// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QMap>
#include <QString>
#include <QStringList>

// The operations that can be made to fail.
enum class RecordedOperation {
    RunningApplications,
    FrontmostApplication,
    Snapshot,
    Activate,
    Terminate,
    IsTerminated,
    ApplicationFolders,
    DefaultForRole,
    OpenApplication,
    OpenURL,
    OpenURLWithApplication,
    Reveal,
    IsProcessTrusted,
    RequestTrust,
    ApplicationTree,
    ReadElements,
    Press,
    PostKeys,
    Capture,
    RunScript,
    ClaimInstance,
};

// State shared by the services of one recording desktop: the journal of all changes, in order, and the
// failures to simulate. Must outlive the services. Thread: main.
class RecordingJournal
{
public:
    // One line per change to the desktop or prompt to the user. Read operations add no line.
    QStringList lines;

    // Appends a line; replaces line breaks in it by blanks.
    void note(const QString &line);

    // Operations that fail, with the platform's message.
    QMap<RecordedOperation, QString> failures;

    // Whether every operation returns to the event loop once before it finishes, as on a real desktop.
    bool answersLater = false;

    // Returns to the event loop once if `answersLater` is set.
    QCoro::Task<void> turn();

    // To be called at the start of every operation. Throws PlatformError if it is to fail.
    QCoro::Task<void> begin(RecordedOperation operation);
};
