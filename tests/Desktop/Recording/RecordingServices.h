// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Clock.h"
#include "Desktop/Keyboard.h"
#include "Desktop/Recording/RecordingJournal.h"
#include "Desktop/Recording/RecordingWorkspace.h"
#include "Desktop/ScreenCapture.h"
#include "Desktop/Scripting.h"
#include "Desktop/Session.h"

#include <functional>

// The simpler services. Each records the calls and returns scripted results.

class RecordingSession : public Session
{
public:
    explicit RecordingSession(RecordingJournal &journal) : m_journal(journal) {}

    std::optional<QString> lastingObstacle;
    bool locked = false;

    std::optional<QString> obstacle() const override { return lastingObstacle; }
    QCoro::Task<bool> isLocked() override;

private:
    RecordingJournal &m_journal;
};

class RecordingKeyboard : public Keyboard
{
public:
    RecordingKeyboard(RecordingJournal &journal, const RecordingWorkspace &workspace)
        : m_journal(journal), m_workspace(workspace)
    {
    }

    QList<KeyStroke> strokes;                // posted so far
    QList<std::chrono::microseconds> pauses; // the pause after each stroke

    // Accepts no receiver if no application is frontmost.
    QCoro::Task<void> post(QList<KeyStroke> newStrokes, std::chrono::microseconds pause,
                           std::optional<RunningApplication> receiver) override;

private:
    RecordingJournal &m_journal;
    const RecordingWorkspace &m_workspace;
};

class RecordingScreenCapture : public ScreenCapture
{
public:
    explicit RecordingScreenCapture(RecordingJournal &journal) : m_journal(journal) {}

    bool writesFile = true; // a one-pixel image, if the folder exists

    QCoro::Task<void> capture(QString path) override;

private:
    RecordingJournal &m_journal;
};

class RecordingScripting : public Scripting
{
public:
    explicit RecordingScripting(RecordingJournal &journal) : m_journal(journal) {}

    ScriptOutcome outcome; // of every script; the host is ignored
    std::function<void()> whileRunning = [] {};
    int interruptions = 0;

    QCoro::Task<ScriptOutcome> run(QString source, ScriptHost &host) override;
    void interrupt() override { ++interruptions; }

private:
    RecordingJournal &m_journal;
};

// A clock that advances only by sleeps, which take no real time.
class RecordingClock : public Clock
{
public:
    explicit RecordingClock(RecordingJournal &journal) : m_journal(journal) {}

    QDateTime time{QDate(2024, 5, 1), QTime(14, 3, 7)};
    QList<std::chrono::milliseconds> sleeps;

    QDateTime now() const override { return time; }
    QCoro::Task<void> sleep(std::chrono::milliseconds duration) override;

private:
    RecordingJournal &m_journal;
};
