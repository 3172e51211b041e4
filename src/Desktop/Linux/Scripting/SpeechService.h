// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// The desktop's speech service, Speech Dispatcher.
namespace SpeechService {

// Has the text spoken, after what is being spoken, and returns once the service has taken it. Throws
// PlatformError if there is no such service. Thread: any; it blocks.
void say(const QString &text);

} // namespace SpeechService
