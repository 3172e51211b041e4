// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

// From what the model writes to an address. Pure functions, callable from any thread.
namespace Executor {

// The address that the text means: "https://" is put before one without a scheme, and nothing else is
// repaired. Nothing when that is no valid address with a host. QUrl keeps a host in its normal form only
// ("Example.ORG" as "example.org", "1.2.3" as "1.2.0.3"), which browsers reach for either.
std::optional<QUrl> webAddress(const QString &text);

// The host of such an address, letter for letter as it stands in the text.
QString typedHost(const QString &address);

// The address of a web search for these words.
QString searchAddress(const QString &query);

} // namespace Executor
