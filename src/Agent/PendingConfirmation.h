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
};
