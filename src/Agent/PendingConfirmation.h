// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <QString>
#include <QUuid>

// An action that waits for the user's approval. A plain record of the main thread.
struct PendingConfirmation
{
    QUuid id = QUuid::createUuid();
    AgentAction action;
    QString reason; // the safety policy's wording; a script's lines follow its first line

    // The reason as the user is shown it: complete, and with a visible mark for each character that could not
    // be seen. One line, but for the lines of a script.
    QString shownReason() const;
};
