// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Actions/AgentAction.h"

#include <QString>
#include <QUuid>

// An action waiting for the user's approval. A plain record. Thread: main.
struct PendingConfirmation
{
    QUuid id = QUuid::createUuid();
    AgentAction action;
    QString reason; // the safety policy's wording; a script follows after the first line

    // The reason for display: complete, with visible marks for invisible characters. One line, except for
    // scripts.
    QString shownReason() const;
};
