// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Recording/RecordingAccessibility.h"
#include "Desktop/Recording/RecordingServices.h"
#include "Desktop/Recording/RecordingWorkspace.h"

// An in-memory desktop for unit tests and dry runs, scripted and inspected through its members. Files are
// real, below the given home folder. Thread: main.
class RecordingDesktop
{
public:
    explicit RecordingDesktop(const QString &homeDirectory) : files(homeDirectory) {}
    RecordingDesktop(const RecordingDesktop &) = delete;
    RecordingDesktop &operator=(const RecordingDesktop &) = delete;

    // The references are valid for this object's lifetime.
    Desktop services()
    {
        return {session, workspace, accessibility, keyboard, screenCapture, scripting, files, dialogs, clock};
    }

    RecordingJournal journal;
    RecordingSession session{journal};
    RecordingWorkspace workspace{journal};
    RecordingAccessibility accessibility{journal};
    RecordingKeyboard keyboard{journal, workspace};
    RecordingScreenCapture screenCapture{journal};
    RecordingScripting scripting{journal};
    RecordingClock clock{journal};
    Files files;
    Dialogs dialogs;
};
