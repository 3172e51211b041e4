// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/IdleTime.h"
#include "Models/ModelManager.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// `orvane models` with its words, except for downloads. Synchronous; return the exit status.
namespace ModelsCommand {

// Lists the catalog, marking the selected model and those on this machine, and says where the files are and
// how long an idle model stays in memory.
int list(const ModelManager &models, IdleTime::Minutes idleTime, Terminal &terminal);

// Stores the choice; the model is loaded on first use.
int select(ModelManager &models, const LocalModel &model, Terminal &terminal);

// Stores how long an idle model stays in memory. A running window follows after its next task.
int keep(const ModelStorage &storage, IdleTime::Minutes idleTime, Terminal &terminal);

} // namespace ModelsCommand
