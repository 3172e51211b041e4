// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

#include <optional>

// From what a person writes to an address. Pure functions, callable from any thread.
namespace Executor {

// The address that the text means: "https://" is put before one without a scheme, and nothing else is
// repaired. Nothing when that is no valid address with a host.
std::optional<QUrl> webAddress(const QString &text);

// The address of a web search for these words.
QString searchAddress(const QString &query);

} // namespace Executor
