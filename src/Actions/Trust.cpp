// SPDX-License-Identifier: Apache-2.0
#include "Actions/Trust.h"

#include "Actions/ActionError.h"

QCoro::Task<void> Trust::requireTrust(QString refusal, Desktop desktop)
{
    const bool trusted = co_await desktop.accessibility.isProcessTrusted();
    if (trusted)
        co_return;
    co_await desktop.accessibility.requestTrust();
    const bool trustedNow = co_await desktop.accessibility.isProcessTrusted();
    if (!trustedNow)
        throw ActionError(refusal);
}

QCoro::Task<bool> Trust::switchAccessibilityOn(Desktop desktop)
{
    if (desktop.accessibility.isTrustGivenByUser())
        co_return false;
    try {
        const bool trusted = co_await desktop.accessibility.isProcessTrusted();
        if (trusted)
            co_return false;
        co_await desktop.accessibility.requestTrust();
        const bool trustedNow = co_await desktop.accessibility.isProcessTrusted();
        co_return trustedNow;
    } catch (const LocalizedError &) {
        co_return false;
    }
}
