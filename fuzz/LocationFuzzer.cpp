// SPDX-License-Identifier: Apache-2.0
// Any text resolves to an absolute path, and to an address with a host or none.
#include "Fuzzing.h"

#include "Actions/Operations/Locations.h"
#include "Actions/Operations/WebAddress.h"

#include <QUrl>

using namespace Qt::StringLiterals;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = textOf(data, size);
    const QString home = u"/home/kim"_s;
    const QString path = Locations::resolveFolder(text, home);
    require(path.startsWith(u'/') && (path == "/"_L1 || !path.endsWith(u'/')));
    require(!Locations::lastComponent(path).isEmpty());
    require(Locations::pathInside(path, text).startsWith(path));

    if (const std::optional<QString> address = WebAddress::fromText(text)) {
        const QUrl url(*address, QUrl::StrictMode);
        require(url.isValid() && !url.scheme().isEmpty() && !url.host().isEmpty());
        QUrl typed;
        typed.setHost(WebAddress::typedHost(text), QUrl::TolerantMode);
        require(typed.host() == url.host());
    }
    const std::optional<QString> search = WebAddress::fromText(WebAddress::forSearch(text));
    require(search && QUrl(*search).host() == "www.google.com"_L1);
    return 0;
}
