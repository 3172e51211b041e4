// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// The private desktop's clipboard, to check what an application has selected. Requires a QGuiApplication.
// Thread: main.
namespace Clipboard {

// Presses keys in xdotool's notation ("ctrl+c") and returns what the frontmost application copies; empty if
// nothing.
QString copiedWith(const QStringList &keys);

} // namespace Clipboard
