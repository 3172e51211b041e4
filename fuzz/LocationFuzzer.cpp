// SPDX-License-Identifier: Apache-2.0
// Any text resolves to an absolute path, and to an address with a host or none.
#include "Fuzzing.h"

#include "Actions/Operations/Locations.h"
#include "Actions/Operations/WebAddress.h"

using namespace Qt::StringLiterals;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = textOf(data, size);
    const QString home = u"/home/kim"_s;
    const QString path = Executor::resolveFolder(text, home);
    require(path.startsWith(u'/') && (path == "/"_L1 || !path.endsWith(u'/')));
    require(!Executor::lastComponent(path).isEmpty());
    require(Executor::pathInside(path, text).startsWith(path));

    const std::optional<QUrl> address = Executor::webAddress(text);
    require(!address || (address->isValid() && !address->scheme().isEmpty() && !address->host().isEmpty()));
    if (address) {
        QUrl typed;
        typed.setHost(Executor::typedHost(text), QUrl::TolerantMode);
        require(typed.host() == address->host());
    }
    const std::optional<QUrl> search = Executor::webAddress(Executor::searchAddress(text));
    require(search && search->host() == "www.google.com"_L1);
    return 0;
}
