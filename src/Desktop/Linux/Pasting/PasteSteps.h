// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Typing/TypingPlan.h"

// Keys to send together, or a text to paste.
struct PasteStep
{
    QList<PlannedKey> keys; // at most 20; none if `text` is pasted
    QString text;
};

// How characters that the layout has are typed. With Caps Lock on, keys would type others.
enum class OwnCharacters { Typed, Pasted };

// Plans how to type the strokes on the user's own layout, which isn't changed. Consecutive texts are typed as
// one. Each of its lines is typed with keys, or pasted as a whole if it has a character that the layout
// lacks. Line breaks and tabs are always keys.
//
// A key whose character the layout lacks is such a text, too. With Control or Alternate, a letter of another
// group or a digit that needs Shift (as on AZERTY) is the plain key that has it, as users press it. Throws
// PlatformError if a stroke can't be typed. A pure function.
QList<PasteStep> planPasteSteps(const QList<KeyStroke> &strokes, const KeyboardLayout &layout,
                                OwnCharacters ownCharacters);

// Whether any step is a text to paste.
bool anyIsPasted(const QList<PasteStep> &steps);

// The shortcut that pastes. In terminals, Ctrl+V is another key.
enum class PasteShortcut { Usual, Terminal };
QList<PlannedKey> planPasteShortcut(PasteShortcut shortcut, const KeyboardLayout &layout);
