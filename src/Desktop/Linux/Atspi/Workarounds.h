// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Application.h"
#include "Desktop/Linux/Atspi/Bulk.h"
#include "Desktop/Workspace.h"

#include <QCoroTask>

#include <memory>
#include <optional>

class AtspiEnvironment;

// Workarounds for the deviations in Toolkits.h that take calls. All throw as `AtspiApplication::exchange`
// does. Thread: main.
namespace Atspi {

// For GTK 3: presses a control with the keyboard. If a D-Bus call opened a modal dialog such as "Save As...",
// the application would answer no other calls until it closes, and deadlock at the next key.
//
// Handles visible buttons and menu items, opening the menus as needed. Restores the keyboard focus unless the
// press moved it. Returns false if the control is disabled, or nothing if it can't be pressed by key and
// needs its press action. Throws PlatformError if the key can't be sent.
QCoro::Task<std::optional<bool>> pressWithKey(std::shared_ptr<AtspiApplication> application,
                                              AtspiReference object, AtspiEnvironment &environment,
                                              RunningApplication receiver);

// For Firefox: queries its pages' texts and actions, and polls briefly until there are any. Returns false if
// there are none, for example without an open page. Needed once per browser process.
QCoro::Task<bool> wakePages(std::shared_ptr<AtspiApplication> application,
                            std::shared_ptr<const AtspiCache> cache);

// For Chromium: whether all of the application's windows appear empty.
QCoro::Task<bool> hidesControls(std::shared_ptr<AtspiApplication> application,
                                std::shared_ptr<const AtspiCache> cache);

} // namespace Atspi
