// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <optional>

// Opens web pages. Thread: main.
namespace Browsing {

// Opens the address in the named application or the default browser. The result line contains only the host,
// as written. Throws ActionError for an invalid address or an unknown application; passes PlatformError on.
QCoro::Task<QString> openURL(QString text, std::optional<QString> app, Desktop desktop);

} // namespace Browsing
