// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QMap>
#include <QString>
#include <QStringList>

// The operations of the desktop services that can be made to fail.
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

// What the services of one recording desktop share: the journal of everything done to the desktop, in order,
// and the failures that they are told to report. Main thread; outlives the services.
class RecordingJournal
{
public:
    // One line for everything that changed the desktop or asked the user something. What only reads leaves
    // no line.
    QStringList lines;

    // Appends a line; breaks inside it become blanks.
    void note(const QString &line);

    // Operations that fail from now on, with the platform's message.
    QMap<RecordedOperation, QString> failures;

    // Whether every operation lets the event loop run once before it answers, as a real desktop does.
    bool answersLater = false;

    // Lets the event loop run once, if answers come later.
    QCoro::Task<void> turn();

    // Every operation begins with this. Throws PlatformError when the operation is to fail.
    QCoro::Task<void> begin(RecordedOperation operation);
};
