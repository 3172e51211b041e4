// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Browsing.h"

#include "Actions/ActionError.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/WebAddress.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// How long a browser takes to come up and show the new tab.
constexpr auto pageSettlingTime = 1200ms;

} // namespace

QCoro::Task<QString> Browsing::openURL(QString text, std::optional<QString> app, Desktop desktop)
{
    const std::optional<QString> url = WebAddress::fromText(text);
    if (!url)
        throw ActionError(u"“%1” isn't a valid address."_s.arg(text));
    QString place = u"the default browser"_s;
    if (app) {
        const ApplicationBundle browser = co_await Applications::foundApplication(*app, desktop);
        co_await desktop.workspace.open(*url, browser);
        place = browser.displayName;
    } else {
        // Whether a handler took the address is not told: the next observation shows it.
        co_await desktop.workspace.open(*url);
    }
    co_await desktop.clock.sleep(pageSettlingTime);
    co_return u"Opened %1 in %2."_s.arg(WebAddress::typedHost(text), place);
}
