// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <optional>

// Pages in browsers. Main thread.
namespace Browsing {

// Opens the address in the named application, or in the default browser, and gives the result line, which
// names the host alone, as it was written. Throws ActionError for an invalid address or an unknown
// application; PlatformError passes through.
QCoro::Task<QString> openURL(QString text, std::optional<QString> app, Desktop desktop);

} // namespace Browsing
