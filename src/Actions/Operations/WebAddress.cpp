// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/WebAddress.h"

#include <QRegularExpression>
#include <QStringEncoder>

using namespace Qt::StringLiterals;

namespace {

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
    const bool hasScheme = text.contains("://"_L1);
    const QUrl url(hasScheme ? text : u"https://"_s + text, QUrl::StrictMode);
    // Text such as "//host/?to=a://b" has a host, but nothing that could open it.
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty())
        return std::nullopt;
    return url;
}

QString Executor::typedHost(const QString &address)
{
    static const QRegularExpression host(u"^(?:[^/]*://)?(?:[^/?#]*@)?(?:\\[([^\\]]*)\\]|([^/?#:]*))"_s);
    const QRegularExpressionMatch match = host.match(address);
    return match.captured(1) + match.captured(2);
}

QString Executor::searchAddress(const QString &query)
{
    return u"https://www.google.com/search?q="_s + percentEncoded(query);
}
