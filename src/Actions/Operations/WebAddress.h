// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// Converts the model's text to web addresses. Pure functions. Any thread.
namespace WebAddress {

// Parses an address. Prepends "https://" if there is no scheme; otherwise the text stays unchanged
// ("Example.ORG", "1.2.3"), except that the scheme becomes lower case and non-ASCII characters are encoded.
// Returns nothing if the text is not a valid address with a host.
std::optional<QString> fromText(const QString &text);

// The host of such an address, exactly as written.
QString typedHost(const QString &address);

// The address of a web search for the query.
QString forSearch(const QString &query);

} // namespace WebAddress
