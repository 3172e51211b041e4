// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QObject>
#include <QString>

// What a start of the program asks of the instance that is running already.
enum class InstanceRequest {
    Activate, // show the window
    Toggle,   // what the hot key does
    Nothing,  // it need only run
};

enum class InstanceStanding {
    First, // this process is the running instance now
    Later, // another one is, and has taken the request: this process is to end
};

// Keeps the program to one running instance a user and desktop session. A token names the user's deed (a
// click, a key) to the window system, which lets windows come to the front only for such; it may be empty.
// Main thread.
//
// Make it before the application object, which takes the token of this start out of the environment.
class ProgramInstance : public QObject
{
    Q_OBJECT

public:
    // Becomes the running instance, or else hands the request over to the one that is. Of several starts at
    // the same time exactly one becomes it; where instances cannot know of each other, each does. Call it
    // once, with the signals connected. Asynchronous and bounded; throws PlatformError, with a sentence for
    // the user, when the running instance does not answer.
    virtual QCoro::Task<InstanceStanding> claim(InstanceRequest request) = 0;

    // The token that this process was started with.
    virtual QString launchToken() const = 0;

Q_SIGNALS:
    // Another start, or the desktop, asks the running instance for its window; or does what the hot key does.
    // Only after `claim` has given First has anybody reason to ask.
    void activated(const QString &token);
    void toggleRequested(const QString &token);

protected:
    using QObject::QObject;
};
