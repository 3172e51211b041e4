// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// The private desktop's clipboard: a way to see what an application has selected. Main thread, with a
// QGuiApplication.
namespace Clipboard {

// What the application in front puts there when these keys are pressed, as xdotool writes them ("ctrl+c");
// empty when it copies nothing.
QString copiedWith(const QStringList &keys);

} // namespace Clipboard
