// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/Browsing.h"

#include "Actions/ActionError.h"
#include "Actions/Operations/Applications.h"
#include "Actions/Operations/WebAddress.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

// The time a browser needs to start and show the page.
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
        // The result is ignored: the next observation shows the effect.
        co_await desktop.workspace.open(*url);
    }
    co_await desktop.clock.sleep(pageSettlingTime);
    co_return u"Opened %1 in %2."_s.arg(WebAddress::typedHost(text), place);
}
