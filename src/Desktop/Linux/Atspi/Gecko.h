// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"

#include <QCoroTask>

#include <memory>

namespace Atspi {

// Firefox and its kin bring the texts and the actions of a page over from the page's own process, but only
// once somebody has asked for any, and answer that first question as if there were none. So this asks first,
// and waits a moment until an answer shows that they have come; false if none does, as where no page is open.
// Needed once for each run of the browser. Throws as AtspiApplication does. Main thread.
QCoro::Task<bool> wakePages(std::shared_ptr<AtspiApplication> application,
                            std::shared_ptr<const AtspiCache> cache);

} // namespace Atspi
