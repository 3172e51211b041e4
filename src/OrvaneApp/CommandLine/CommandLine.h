// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "OrvaneApp/CommandLine/DoctorReport.h"

#include <QString>
#include <QStringList>

#include <variant>

// What the user asks for on the command line. A plain value.
struct CommandLine
{
    enum class Command { Help, Version, Do, ListModels, DownloadModel, SelectModel, Doctor, Window };

    // How the window comes up, or what becomes of the one that is there.
    enum class Opening { Shown, Hidden, Toggled };

    Command command = Command::Help;
    QString helpText = {}; // of Help
    QString task = {};     // of Do
    // Of SelectModel and DownloadModel: of the catalog, or empty for the selected model.
    QString modelIdentifier = {};
    Opening opening = Opening::Shown;                         // of Window
    DoctorReport::Format format = DoctorReport::Format::Text; // of Doctor
    bool verbose = false;

    // The arguments cannot be understood: one sentence, and where to read more.
    struct WrongUse
    {
        QString message;
    };

    // The arguments after the program's name. A pure function.
    static std::variant<CommandLine, WrongUse> parse(const QStringList &arguments);
};
