// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/ResponseHead.h"

#include <QCryptographicHash>
#include <QHash>

#include <algorithm>
#include <array>

namespace {

constexpr int okStatus = 200;
constexpr int partialStatus = 206;

using Fields = QHash<QByteArray, QByteArray>;

std::optional<qint64> number(const QByteArray &text)
{
    bool readable = false;
    const qint64 value = text.trimmed().toLongLong(&readable);
    return readable && value >= 0 ? std::optional(value) : std::nullopt;
}

QByteArray ifSha256(const QByteArray &bytes)
{
    return bytes.size() == QCryptographicHash::hashLength(QCryptographicHash::Sha256) ? bytes : QByteArray();
}

// Finds "sha-256=:BASE64:" in a list of digests; the older header omits the colons.
QByteArray digestInList(const QByteArray &list)
{
    for (const QByteArray &item : list.split(',')) {
        const qsizetype equals = item.indexOf('=');
        if (item.left(equals).trimmed().toLower() != "sha-256")
            continue;
        QByteArray value = item.mid(equals + 1).trimmed();
        if (value.startsWith(':') && value.endsWith(':'))
            value = value.mid(1, value.size() - 2);
        return ifSha256(QByteArray::fromBase64(value));
    }
    return {};
}

// Model hosts give a large file's digest as a quoted entity tag of 64 hexadecimal digits.
QByteArray digestInTag(const QByteArray &tag)
{
    QByteArray digits = tag.trimmed();
    digits.replace('"', "");
    const QByteArray bytes = ifSha256(QByteArray::fromHex(digits));
    return bytes.toHex() == digits.toLower() ? bytes : QByteArray();
}

QByteArray digest(int status, const Fields &fields)
{
    QList<QByteArray> found = {digestInTag(fields.value("x-linked-etag")),
                               digestInList(fields.value("repr-digest")),
                               digestInList(fields.value("digest"))};
    // Content-Digest covers only the bytes of this response.
    if (status == okStatus)
        found.append(digestInList(fields.value("content-digest")));
    found.removeAll(QByteArray());
    return found.value(0);
}

} // namespace

ResponseHead ResponseHead::parsed(int status, const Headers &headers)
{
    Fields fields;
    for (const auto &[name, value] : headers)
        fields.insert(name.toLower(), value);

    ResponseHead head;
    head.status = status;
    head.entityTag = fields.value("etag").trimmed();
    head.lastModified = fields.value("last-modified").trimmed();
    head.location = fields.value("location").trimmed();
    head.sha256 = digest(status, fields);
    const QByteArray range = fields.value("content-range").trimmed();
    if (status == partialStatus && range.toLower().startsWith("bytes ")) {
        const QByteArray span = range.mid(6);
        head.firstByte = number(span.left(span.indexOf('-')));
        head.size = number(span.mid(span.indexOf('/') + 1));
    } else if (status == okStatus) {
        head.size = number(fields.value("content-length"));
    }
    if (!head.size)
        head.size = number(fields.value("x-linked-size"));
    return head;
}

bool ResponseHead::isRedirect() const
{
    constexpr std::array redirects = {301, 302, 303, 307, 308};
    return !location.isEmpty() && std::find(redirects.begin(), redirects.end(), status) != redirects.end();
}
