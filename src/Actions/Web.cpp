// SPDX-License-Identifier: Apache-2.0
#include "Actions/Web.h"

#include "Actions/ActionError.h"
#include "Actions/Applications.h"
#include "Actions/WebAddress.h"

using namespace std::chrono_literals;

namespace {

// How long a browser takes to come up and show the new tab.
constexpr auto pageSettlingTime = 1200ms;

} // namespace

QCoro::Task<QString> Executor::openURL(QString text, std::optional<QString> app, Desktop desktop)
{
    const std::optional<QUrl> url = webAddress(text);
    if (!url)
        throw ActionError(QStringLiteral("“%1” isn't a valid address.").arg(text));
    QString place = QStringLiteral("the default browser");
    if (app) {
        const ApplicationBundle browser = co_await foundApplication(*app, desktop);
        co_await desktop.workspace.open(*url, browser);
        place = browser.displayName;
    } else {
        // Whether a handler took the address is not told: the next observation shows it.
        co_await desktop.workspace.open(*url);
    }
    co_await desktop.clock.sleep(pageSettlingTime);
    co_return QStringLiteral("Opened %1 in %2.").arg(typedHost(text), place);
}
