// SPDX-License-Identifier: Apache-2.0
#include "Actions/Trust.h"

#include "Actions/ActionError.h"

QCoro::Task<void> Executor::requireTrust(QString refusal, Desktop desktop)
{
    const bool trusted = co_await desktop.accessibility.isProcessTrusted();
    if (trusted)
        co_return;
    co_await desktop.accessibility.requestTrust();
    throw ActionError(refusal);
}
