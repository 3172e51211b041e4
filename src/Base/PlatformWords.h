// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The sentences, and the parts of sentences, that name the computer, its keys or its settings: for each
// platform what is true there. Nothing else in the program says such a thing. Callable from any thread.
struct PlatformWords
{
    QString placeholder;        // in the command field
    QString setupExplanation;   // on the setup card
    QString promptIntroduction; // the system prompt's first line
    // Without the permission to operate other applications: to press keys, to type, to look at controls.
    QString keysRefusal;
    QString typingRefusal;
    QString controlsRefusal;
    QString screenshotFailure;
    // The keys that a question names.
    QString deleteKeys;
    QString quitKeys;
    QString modifierKeys; // those that a user may be holding down

    static const PlatformWords &ofMac();
    static const PlatformWords &ofLinux();

    // Those of the platform that the program is built for.
    static const PlatformWords &current();
};
