// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// `orvane models` and `orvane models select`. Synchronous; return the exit status.
namespace ModelsCommand {

// Lists the catalog, marking the selected model and those on this machine.
int list(const ModelManager &models, Terminal &terminal);

// Stores the choice; the model is loaded on first use.
int select(ModelManager &models, const LocalModel &model, Terminal &terminal);

} // namespace ModelsCommand
