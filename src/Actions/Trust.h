// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Desktop.h"

#include <QCoroTask>
#include <QString>

// The permission to operate other applications. Thread: main.
namespace Trust {

// Required before sending keys or using controls. Without the Accessibility permission, requests it, and
// throws ActionError(refusal) if it is still missing afterwards.
QCoro::Task<void> requireTrust(QString refusal, Desktop desktop);

// Called before a task. Enables accessibility if it is off and no user consent is needed; returns whether it
// did. Failures are ignored: the steps that need accessibility report them.
QCoro::Task<bool> switchAccessibilityOn(Desktop desktop);

} // namespace Trust
