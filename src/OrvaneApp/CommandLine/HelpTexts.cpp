// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/HelpTexts.h"

using namespace Qt::StringLiterals;

QString HelpTexts::general()
{
    return uR"(Usage: orvane [--background | --toggle]
       orvane do TASK
       orvane models [download [ID] | select ID | keep MINUTES]
       orvane doctor [--json]
       orvane integrate [--remove]

Operates your desktop for you: say in plain words what you want, and a language model on
this machine plans it step by step. Risky steps are done only after you have allowed them.

  (no command)          open the window, or bring forward the one that is there
  --background          start without showing the window, for the start of the desktop
  --toggle              show or hide the window, for a keyboard shortcut of the desktop
  do TASK               carry out a task here in the terminal
  models                list the models, and what is on this machine
  models download [ID]  get a model; this is the only thing that goes to the network
  models select ID      plan with another model
  models keep MINUTES   keep an idle model in memory for that long
  doctor                say what works on this desktop, and what to do about what does not
  integrate             make this program known to the desktop, as some desktops require

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
       orvane models keep MINUTES | always

Lists the models with their ID, which one is selected, and which are on this machine.

  download [ID]  get the selected model, or select the one with this ID and get it;
                 a download that was stopped goes on where it was
  select ID      plan with this model from now on
  keep MINUTES   remove a model from memory when it has been idle for that long, at most
                 10080 minutes; the next task loads it again. With "always", keep it. Unless
                 you choose, it is kept on machines with 16 GB or more, and for 15 minutes
                 on others
)"_s;
}

QString HelpTexts::doctorCommand()
{
    return uR"(Usage: orvane doctor [--json]

Says what works on this desktop, and what to do about what does not. It changes nothing. Lines
with ✓ are fine, tasks need what is marked ✗, and ! marks what is good to know.

  --json  the same for scripts: an object with "works" (whether the exit status is 0) and
          "checks", each with "id", "title", "state" (works, limited, broken or absent),
          "needed" (whether tasks need it), "finding" and "advice" (may be empty)

The checks are, by their "id": session, window-manager or windows, accessibility, keyboard,
spare-keys, hot-key, browser, file-manager, show-files, screenshot, applications, model and
llama. Those that make no sense are left out: without a display, or on a Wayland desktop that
Orvane can't operate, all but session, model and llama.

Ends with 0 when all that tasks need works, 3 when only the model is missing or broken, 4 when
something else is, 1 when it was stopped, 64 when the command is wrong.
)"_s;
}

QString HelpTexts::integrateCommand()
{
    return uR"(Usage: orvane integrate [--remove]

Writes a desktop entry for this program into your own application folder. KDE Plasma on Wayland
lets only programs with an entry see and operate the desktop. An installed program has one; a
program that is run from its build folder needs this command once. Start it again afterwards.

Where GNOME Shell is installed, its extension for Orvane is installed for you, too. It runs from
your next login on, and answers no other program.

  --remove  remove the entry and the extension

Ends with 0 when that is done, 1 when it failed, 64 when the command is wrong.
)"_s;
}
