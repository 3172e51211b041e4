// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/SpeechService.h"

#include "Desktop/PlatformError.h"

#include <libspeechd.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

void SpeechService::say(const QString &text)
{
    char *failure = nullptr;
    const std::unique_ptr<SPDConnection, void (*)(SPDConnection *)> connection(
        spd_open2("Orvane", "script", nullptr, SPD_MODE_SINGLE, nullptr, 1, &failure), &spd_close);
    std::free(failure);
    if (!connection)
        throw PlatformError(u"This desktop has no speech service."_s);
    if (spd_say(connection.get(), SPD_MESSAGE, text.toUtf8().constData()) < 0)
        throw PlatformError(u"The desktop's speech service can't speak."_s);
}
