// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"

// Either text for an input method, without control characters, or the keysyms of keys to hold down together.
struct ShellStroke
{
    QString text;
    QList<std::uint32_t> symbols;
    bool endsStroke = false; // the pause follows

    friend bool operator==(const ShellStroke &, const ShellStroke &) = default;
};

// Divides the strokes into text and keys: line breaks and tabs are keys, so that they do in every application
// what the user's own keys do. Throws PlatformError if a stroke can't be typed. A pure function.
QList<ShellStroke> planShellStrokes(const QList<KeyStroke> &strokes);
