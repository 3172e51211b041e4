// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/LocalModel.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

// What the user asks for on the command line. A plain value.
struct CommandLine
{
    enum class Command { Help, Version, Do, ListModels, DownloadModel, SelectModel };

    Command command = Command::Help;
    QString helpText = {}; // of Help
    QString task = {};     // of Do
    std::optional<LocalModel> model =
        {}; // of SelectModel; of DownloadModel, where none means the selected one
    bool verbose = false;

    // The arguments cannot be understood: one sentence, and where to read more.
    struct WrongUse
    {
        QString message;
    };

    // The arguments after the program's name. A pure function.
    static std::variant<CommandLine, WrongUse> parse(const QStringList &arguments);
};
