// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/ProgramInstance.h"
#include "Desktop/Recording/RecordingJournal.h"
#include "Desktop/Shell/Shell.h"

#include <QList>
#include <QPointer>

#include <optional>

// In-memory services for the program's own window. Each records the calls and returns scripted results.
// Thread: main.

class RecordingHotKeys : public HotKeys
{
public:
    explicit RecordingHotKeys(RecordingJournal &journal) : m_journal(journal) {}

    struct HotKey
    {
        std::uint16_t virtualKey = 0;
        HotKeyModifiers modifiers;
        HotKeyIdentifier identifier;
        std::function<void()> pressed;
    };

    bool isOwnedByAnother = false; // whether another program holds every key

    // The hot keys with living references, in order of registration.
    QList<HotKey> registered() const;
    // Presses the key; returns false if it isn't registered.
    bool press(std::uint16_t virtualKey, HotKeyModifiers modifiers) const;

    QCoro::Task<std::shared_ptr<HotKeyReference>> registerHotKey(std::uint16_t virtualKey,
                                                                 HotKeyModifiers modifiers,
                                                                 HotKeyIdentifier identifier,
                                                                 std::function<void()> pressed) override;

private:
    class Reference;

    RecordingJournal &m_journal;
    QList<std::weak_ptr<Reference>> m_references;
};

class RecordingAppearance : public Appearance
{
    Q_OBJECT

public:
    using Appearance::setDark;
};

// Shows and hides real windows on the application's platform; doesn't place them.
class RecordingWindowStyler : public WindowStyler
{
    Q_OBJECT

public:
    explicit RecordingWindowStyler(RecordingJournal &journal) : m_journal(journal) {}

    QList<QPointer<QWindow>> styled;
    QList<QPointer<QWindow>> broughtForward; // latest last
    QStringList tokens;                      // one per window brought forward
    bool canHideApplication = false;
    int titleBar = 0; // height

    using WindowStyler::setCompositing;
    void style(QWindow &window) override;
    void bringForward(QWindow &window, const QString &activationToken = QString()) override;
    bool hideApplication() override;
    int titleBarHeight() const override { return titleBar; }

private:
    RecordingJournal &m_journal;
};

// Adds a journal line for each begin and end.
class RecordingProgramActivity : public ProgramActivity
{
public:
    explicit RecordingProgramActivity(RecordingJournal &journal) : m_journal(journal) {}

    void begin(const QString &reason) override { m_journal.note(QStringLiteral("at work: ") + reason); }
    void end() override { m_journal.note(QStringLiteral("at rest")); }

private:
    RecordingJournal &m_journal;
};

class RecordingProgramInstance : public ProgramInstance
{
    Q_OBJECT

public:
    explicit RecordingProgramInstance(RecordingJournal &journal) : m_journal(journal) {}

    InstanceStanding standing = InstanceStanding::First;
    QString token;                          // of this launch
    std::optional<InstanceRequest> request; // of the claim

    QCoro::Task<InstanceStanding> claim(InstanceRequest newRequest) override;
    QString launchToken() const override { return token; }

private:
    RecordingJournal &m_journal;
};

// All services of the program's own window.
class RecordingShell
{
public:
    RecordingShell() = default;
    RecordingShell(const RecordingShell &) = delete;
    RecordingShell &operator=(const RecordingShell &) = delete;

    // The references are valid for this object's lifetime.
    Shell services() { return {hotKeys, appearance, windowStyler, menuBar, activity}; }

    RecordingJournal journal;
    RecordingHotKeys hotKeys{journal};
    RecordingAppearance appearance;
    RecordingWindowStyler windowStyler{journal};
    MenuBar menuBar;
    RecordingProgramActivity activity{journal};
    RecordingProgramInstance programInstance{journal};
};
