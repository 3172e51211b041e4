// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

#include <optional>

// What the desktop shows besides controls. Main thread.
namespace Executor {

// The name of the application that the user works with; none when there is none, it has no name, or the
// desktop cannot tell. Never throws.
QCoro::Task<std::optional<QString>> frontmostName(Desktop desktop);

// The first eight different windows of other programs, front to back: "Safari — News; Mail", or "none", also
// when the desktop cannot tell. Never throws.
QCoro::Task<QString> windowSummary(Desktop desktop);

} // namespace Executor
