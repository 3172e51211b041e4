// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"
#include "OrvaneApp/CommandLine/Terminal.h"

// `orvane models` and `orvane models select`: what takes moments, and is done at once. Each gives the exit
// status.
namespace ModelsCommand {

// The catalog: what is selected, and what is on this machine.
int list(const ModelManager &models, Terminal &terminal);

// The choice lasts; the model is loaded when it is first needed.
int select(ModelManager &models, const LocalModel &model, Terminal &terminal);

} // namespace ModelsCommand
