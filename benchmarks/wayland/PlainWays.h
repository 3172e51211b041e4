// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Single ways of doing what actions do, without the code that is measured. They block. Thread: main.
namespace PlainWays {

// One question to the compositor. Where it announces windows, they are known once it has answered.
void askCompositor();

// Copies the text and presses Ctrl+V. Only where programs without the focus may copy, so not on GNOME.
void paste(const QString &text);

} // namespace PlainWays
