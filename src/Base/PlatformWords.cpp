// SPDX-License-Identifier: Apache-2.0
#include "Base/PlatformWords.h"

using namespace Qt::StringLiterals;

const PlatformWords &PlatformWords::ofMac()
{
    static const PlatformWords words{
        .placeholder = u"Tell your Mac what to do…"_s,
        .setupExplanation = u"Orvane runs a language model entirely on your Mac. The one-time download is "
                            "stored locally; nothing you type ever leaves this device."_s,
        .promptIntroduction = u"You operate a Mac for the user by emitting ONE JSON action at a time. "
                              "Reply with only a JSON object, no prose."_s,
        .keysRefusal = u"Accessibility permission is required. Enable Orvane in System Settings → Privacy & "
                       "Security → Accessibility, then try again."_s,
        .typingRefusal = u"Accessibility permission is required to type. Enable it in System Settings → "
                         "Privacy & Security → Accessibility."_s,
        .controlsRefusal = u"Accessibility permission is required. Enable it in System Settings → Privacy & "
                           "Security → Accessibility."_s,
        .screenshotFailure = u"The screenshot failed. Screen Recording permission may be required."_s,
        .deleteKeys = u"⌘⌫"_s,
        .quitKeys = u"⌘Q"_s,
        .modifierKeys = u"Shift, Control, Option, Command"_s,
    };
    return words;
}

const PlatformWords &PlatformWords::ofLinux()
{
    static const PlatformWords words{
        .placeholder = u"Tell your computer what to do…"_s,
        .setupExplanation =
            u"Orvane runs a language model entirely on your computer. The one-time download is "
            "stored locally; nothing you type ever leaves this device."_s,
        .promptIntroduction = u"You operate a computer for the user by emitting ONE JSON action at a time. "
                              "Reply with only a JSON object, no prose."_s,
        .keysRefusal = u"Accessibility permission is required. Switch on accessibility in this desktop's "
                       "settings, then try again."_s,
        .typingRefusal = u"Accessibility permission is required to type. Switch on accessibility in this "
                         "desktop's settings."_s,
        .controlsRefusal = u"Accessibility permission is required. Switch on accessibility in this desktop's "
                           "settings."_s,
        .screenshotFailure = u"The screenshot failed. The folder may be missing or write-protected."_s,
        .deleteKeys = u"Ctrl+Backspace"_s,
        .quitKeys = u"Ctrl+Q"_s,
        .modifierKeys = u"Shift, Ctrl, Alt"_s,
    };
    return words;
}
