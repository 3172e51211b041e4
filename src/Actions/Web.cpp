// SPDX-License-Identifier: Apache-2.0
#include "Actions/Web.h"

#include "Actions/ActionError.h"
#include "Actions/Applications.h"

#include <QStringEncoder>

using namespace std::chrono_literals;

namespace {

// How long a browser takes to come up and show the new tab.
constexpr auto pageSettlingTime = 1200ms;

// What RFC 3986 allows in a query besides letters, digits and "-._~". "&", "=" and "+" are among it, and so
// keep the meaning that the search engine gives them.
constexpr char allowedInQuery[] = "!$&'()*+,;=:@/?";

QString percentEncoded(const QString &query)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QByteArray bytes = encoder.encode(query);
    return encoder.hasError() ? query : QString::fromLatin1(bytes.toPercentEncoding(allowedInQuery));
}

} // namespace

std::optional<QUrl> Executor::webAddress(const QString &text)
{
    const bool hasScheme = text.contains(QLatin1String("://"));
    const QUrl url(hasScheme ? text : QStringLiteral("https://") + text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

QString Executor::searchAddress(const QString &query)
{
    return QStringLiteral("https://www.google.com/search?q=") + percentEncoded(query);
}

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
    co_return QStringLiteral("Opened %1 in %2.").arg(url->host(), place);
}
