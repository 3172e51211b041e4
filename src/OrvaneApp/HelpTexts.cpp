// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/HelpTexts.h"

using namespace Qt::StringLiterals;

QString HelpTexts::general()
{
    return uR"(Usage: orvane [--background | --toggle]
       orvane do TASK
       orvane models [download [ID] | select ID]

Operates your desktop for you: say in plain words what you want, and a language model on
this machine plans it step by step. Risky steps are done only after you have allowed them.

  (no command)          open the window, or bring forward the one that is there
  --background          start without showing the window, for the start of the desktop
  --toggle              show or hide the window, for a keyboard shortcut of the desktop
  do TASK               carry out a task here in the terminal
  models                list the models, and what is on this machine
  models download [ID]  get a model; this is the only thing that goes to the network
  models select ID      plan with another model

  -h, --help            say this, or more about a command: orvane do --help
  --version             say the version
  --verbose             show the messages of the model's runtime (also ORVANE_VERBOSE=1)

With ORVANE_HOME=FOLDER in the environment, models and settings are kept in that folder
instead of the user's data and settings folders. With ORVANE_MODEL_MIRROR=ADDRESS, models are
fetched from that server, which has them under the same paths.
)"_s;
}

QString HelpTexts::doCommand()
{
    return uR"(Usage: orvane do TASK

Carries out a task on this desktop, for example:
  orvane do "Open Finder and create a folder called Projects"

Before a step that could lose or send something you are asked; without a terminal to ask at,
the answer is no. Ctrl+C stops before the next step, a second Ctrl+C quits at once.

Ends with 0 when the task is done, 1 when it ended otherwise, 2 when you refused a step,
3 when there is no model yet (see: orvane models --help), 64 when the command is wrong.
)"_s;
}

QString HelpTexts::modelsCommand()
{
    return uR"(Usage: orvane models
       orvane models download [ID]
       orvane models select ID

Lists the models with their ID, which one is selected, and which are on this machine.

  download [ID]  get the selected model, or select the one with this ID and get it;
                 a download that was stopped goes on where it was
  select ID      plan with this model from now on
)"_s;
}
