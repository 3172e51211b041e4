// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <optional>

// Web addresses and searches. Main thread, but for the two pure functions.
namespace Executor {

// The address that the text means: "https://" is put before one without a scheme, and nothing else is
// repaired. Nothing when that is no valid address with a host. Pure.
std::optional<QUrl> webAddress(const QString &text);

// The address of a web search for these words. Pure.
QString searchAddress(const QString &query);

// Opens the address in the named application, or in the default browser, and gives the result line, which
// names the host alone. Throws ActionError for an invalid address or an unknown application; PlatformError
// passes through.
QCoro::Task<QString> openURL(QString text, std::optional<QString> app, Desktop desktop);

} // namespace Executor
