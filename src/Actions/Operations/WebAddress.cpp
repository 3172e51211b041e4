// SPDX-License-Identifier: Apache-2.0
#include "Actions/Operations/WebAddress.h"

#include <QRegularExpression>
#include <QStringEncoder>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The characters that RFC 3986 allows in a query besides letters, digits and "-._~". "&", "=" and "+" stay
// unencoded, so the search engine interprets them.
constexpr char allowedInQuery[] = "!$&'()*+,;=:@/?";

QString percentEncoded(const QString &query)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    const QByteArray bytes = encoder.encode(query);
    return encoder.hasError() ? query : QString::fromLatin1(bytes.toPercentEncoding(allowedInQuery));
}

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(),
                       [](QChar character) { return character.unicode() < 0x80; });
}

} // namespace

std::optional<QString> WebAddress::fromText(const QString &text)
{
    const QString address = text.contains("://"_L1) ? text : u"https://"_s + text;
    const QUrl url(address, QUrl::StrictMode);
    // "//host/?to=a://b" has a host but no scheme, so nothing could open it.
    if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty())
        return std::nullopt;
    if (!isAscii(address))
        return url.toString(QUrl::FullyEncoded);
    // Desktops look up handlers by lower-case scheme.
    return url.scheme() + address.sliced(url.scheme().size());
}

QString WebAddress::typedHost(const QString &address)
{
    static const QRegularExpression host(u"^(?:[^/]*://)?(?:[^/?#]*@)?(?:\\[([^\\]]*)\\]|([^/?#:]*))"_s);
    const QRegularExpressionMatch match = host.match(address);
    return match.captured(1) + match.captured(2);
}

QString WebAddress::forSearch(const QString &query)
{
    return u"https://www.google.com/search?q="_s + percentEncoded(query);
}
