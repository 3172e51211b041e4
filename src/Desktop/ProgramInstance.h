// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>

// What a second start of the program requests from the running instance.
enum class InstanceRequest {
    Activate, // show the window
    Toggle,   // what the hot key does
    Nothing,  // have an instance running, no more
};

enum class InstanceStanding {
    First, // this process is the running instance
    Later, // another process is and has accepted the request; this process should exit
};

// Ensures a single running instance per user and desktop session. An activation token, possibly empty,
// identifies the user input (a click, a key) that caused a start; the window system requires it before it
// lets a window take the focus. Thread: main.
//
// Construct it before the application object, which removes the launch token from the environment.
class ProgramInstance : public QObject
{
    Q_OBJECT

public:
    // Becomes the running instance, or forwards the request to it. Of several concurrent starts exactly one
    // becomes the running instance; without a way to find each other, all do. Call once, after connecting the
    // signals. Throws PlatformError if the running instance doesn't respond before the timeout.
    virtual QCoro::Task<InstanceStanding> claim(InstanceRequest request) = 0;

    // The activation token that this process was started with.
    virtual QString launchToken() const = 0;

Q_SIGNALS:
    // A later start or the desktop requests the window (`activated`) or the hot key's action
    // (`toggleRequested`). Emitted only after `claim` has returned First.
    void activated(const QString &token);
    void toggleRequested(const QString &token);

protected:
    using QObject::QObject;
};
