// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Screenshot.h"

#include "Actions/ActionError.h"
#include "Base/PlatformWords.h"

QCoro::Task<void> screenshot(QString path, Desktop desktop)
{
    co_await desktop.screenCapture.capture(path);
    const bool succeeded = co_await desktop.files.exists(path);
    if (!succeeded)
        throw ActionError(PlatformWords::current().screenshotFailure);
}
