// SPDX-License-Identifier: Apache-2.0
#pragma once

// GNOME's questions for permission, answered as a user would. Thread: main.
namespace GnomeQuestions {

enum class Decision { Refuse, Allow };

// Whether GNOME asks if keys may be pressed.
bool isAskedForKeys();

// Answers that question.
void answerForKeys(Decision decision);

// Whether GNOME asks if a hot key may be added, and the answer.
bool isAskedForHotKey();
void answerForHotKey(Decision decision);

// Has Orvane press a key for the first time, and allows it. Needs a desktop without windows.
void allowKeys();

// What an answer that allows screenshots has stored.
void presetPictures();

} // namespace GnomeQuestions
