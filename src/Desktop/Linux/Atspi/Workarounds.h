// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"

#include <QCoroTask>

#include <memory>
#include <optional>

class AtspiEnvironment;

// What single toolkits need beyond the protocol; Toolkits.h says why. Everything throws what
// `AtspiApplication::exchange` throws. Main thread.
namespace Atspi {

// For GTK 3. While a dialog like "Save As..." keeps the message that opened it from ending, nothing else is
// answered, and at the next key the application waits for itself for good. A key is no message.
//
// Presses a button that is seen, or an item of a menu. Menus are opened on the way; the keyboard focus is
// returned to where it was, unless the press has moved it. False when the control is greyed out. None where a
// key cannot do it, to be pressed like the controls of all other toolkits. Throws PlatformError when the key
// cannot be sent. The process is the application's.
QCoro::Task<std::optional<bool>> pressWithKey(std::shared_ptr<AtspiApplication> application,
                                              AtspiReference object, AtspiEnvironment &environment,
                                              qint64 processIdentifier);

// For Firefox. Asks for the texts and actions of its pages, and waits a moment until an answer shows that
// they have come; false if none does, as where no page is open. Needed once for each run of the browser.
QCoro::Task<bool> wakePages(std::shared_ptr<AtspiApplication> application,
                            std::shared_ptr<const AtspiCache> cache);

// For Chromium. Whether the application shows windows with nothing inside.
QCoro::Task<bool> hidesControls(std::shared_ptr<AtspiApplication> application,
                                std::shared_ptr<const AtspiCache> cache);

} // namespace Atspi
