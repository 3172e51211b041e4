// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/IdleTime.h"
#include "OrvaneApp/CommandLine/DoctorReport.h"

#include <QString>
#include <QStringList>

#include <variant>

// The parsed command line. A plain value.
struct CommandLine
{
    enum class Command {
        Help,
        Version,
        Do,
        ListModels,
        DownloadModel,
        SelectModel,
        KeepModel,
        Doctor,
        Integrate,
        Window
    };

    // What happens to the program's desktop entry.
    enum class Integration { Written, Removed };

    // How the window opens, or what happens to a running instance.
    enum class Opening { Shown, Hidden, Toggled };

    Command command = Command::Help;
    QString helpText = {}; // for Help
    QString task = {};     // for Do
    // For SelectModel and DownloadModel: a catalog id; empty for the selected model.
    QString modelIdentifier = {};
    IdleTime::Minutes idleTime = {};                          // for KeepModel
    Opening opening = Opening::Shown;                         // for Window
    DoctorReport::Format format = DoctorReport::Format::Text; // for Doctor
    Integration integration = Integration::Written;           // for Integrate
    bool verbose = false;

    // A command line that cannot be parsed: one sentence and a pointer to the help.
    struct WrongUse
    {
        QString message;
    };

    // Parses the arguments after the program's name. Pure.
    static std::variant<CommandLine, WrongUse> parse(const QStringList &arguments);
};
