// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// All texts that name the computer, its keys or its settings, per platform. Any thread.
struct PlatformWords
{
    QString placeholder;        // in the command field
    QString setupExplanation;   // on the setup card
    QString promptIntroduction; // the system prompt's first line
    // Shown when the permission to operate other applications is missing: for keys, typing, and controls.
    QString keysRefusal;
    QString typingRefusal;
    QString controlsRefusal;
    QString screenshotFailure;
    // Key combinations named in questions.
    QString deleteKeys;
    QString quitKeys;
    QString modifierKeys; // those that a user may be holding down

    static const PlatformWords &ofMac();
    static const PlatformWords &ofLinux();

    // The words of the platform the program is built for.
    static const PlatformWords &current();
};
