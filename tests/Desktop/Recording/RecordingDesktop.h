// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Recording/RecordingAccessibility.h"
#include "Desktop/Recording/RecordingServices.h"
#include "Desktop/Recording/RecordingWorkspace.h"

// A whole desktop in memory: scripted and inspected through its members, handed to the actions as a Desktop.
// For unit tests and dry runs. Files are the real ones below the given home folder. Main thread.
class RecordingDesktop
{
public:
    explicit RecordingDesktop(const QString &homeDirectory) : files(homeDirectory) {}
    RecordingDesktop(const RecordingDesktop &) = delete;
    RecordingDesktop &operator=(const RecordingDesktop &) = delete;

    // Valid as long as this object.
    Desktop services()
    {
        return {session, workspace, accessibility, keyboard, screenCapture, scripting, files, clock};
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
};
