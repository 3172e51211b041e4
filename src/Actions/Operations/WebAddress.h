// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <optional>

// From what the model writes to an address. Pure functions, callable from any thread.
namespace WebAddress {

// The address that the text means: "https://" is put before one without a scheme, and nothing else is
// repaired, so "Example.ORG" and "1.2.3" stay as they are; the scheme is in lower case. In ASCII: what lies
// outside it is encoded. Nothing when the text is no valid address with a host.
std::optional<QString> fromText(const QString &text);

// The host of such an address, letter for letter as it stands in the text.
QString typedHost(const QString &address);

// The address of a web search for these words.
QString forSearch(const QString &query);

} // namespace WebAddress
