// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Keyboard.h"

// A key, or a piece of a text for an input method: without control characters, or a single line feed or tab.
struct ShellStroke
{
    KeyStroke stroke;
    bool endsStroke = false; // the pause follows

    bool isText() const { return !stroke.text.isEmpty(); }

    friend bool operator==(const ShellStroke &, const ShellStroke &) = default;
};

// Divides long texts. Throws PlatformError if a text can't be typed. A pure function.
QList<ShellStroke> planShellStrokes(const QList<KeyStroke> &strokes);
