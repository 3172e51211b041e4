// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandLine/CommandLine.h"

#include "Models/LocalModel.h"
#include "OrvaneApp/CommandLine/HelpTexts.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

using Parsed = std::variant<CommandLine, CommandLine::WrongUse>;
using Command = CommandLine::Command;

// The arguments as words and options.
struct Words
{
    QStringList words;
    bool help = false;
    bool version = false;
    bool verbose = false;
    bool background = false;
    bool toggle = false;
    bool json = false;
    bool remove = false;
    std::optional<QString> unknownOption;
};

Words sorted(const QStringList &arguments)
{
    Words result;
    bool optionsEnded = false;
    for (const QString &argument : arguments) {
        if (optionsEnded || !argument.startsWith(u'-'))
            result.words.append(argument);
        else if (argument == "--"_L1)
            optionsEnded = true;
        else if (argument == "--help"_L1 || argument == "-h"_L1)
            result.help = true;
        else if (argument == "--version"_L1)
            result.version = true;
        else if (argument == "--verbose"_L1)
            result.verbose = true;
        else if (argument == "--background"_L1)
            result.background = true;
        else if (argument == "--toggle"_L1)
            result.toggle = true;
        else if (argument == "--json"_L1)
            result.json = true;
        else if (argument == "--remove"_L1)
            result.remove = true;
        else if (!result.unknownOption)
            result.unknownOption = argument;
    }
    return result;
}

Parsed wrongUse(const QString &message, const QString &helpCommand = u"orvane --help"_s)
{
    return CommandLine::WrongUse{message + u" See: "_s + helpCommand};
}

Parsed help(const QString &text)
{
    return CommandLine{.command = Command::Help, .helpText = text};
}

Parsed parseDo(const Words &given)
{
    if (given.help)
        return help(HelpTexts::doCommand());
    const QString task = given.words.sliced(1).join(u' ').trimmed();
    if (task.isEmpty())
        return wrongUse(u"There is no task to do."_s, u"orvane do --help"_s);
    return CommandLine{.command = Command::Do, .task = task, .verbose = given.verbose};
}

Parsed parseWithModel(Command command, const QString &identifier, bool verbose)
{
    const QList<LocalModel> &catalog = LocalModel::catalog();
    const auto hasIdentifier = [&identifier](const LocalModel &model) { return model.id == identifier; };
    if (std::none_of(catalog.begin(), catalog.end(), hasIdentifier))
        return wrongUse(u"There is no model “%1”."_s.arg(identifier), u"orvane models"_s);
    return CommandLine{.command = command, .modelIdentifier = identifier, .verbose = verbose};
}

Parsed parseKeep(const QString &time, const Words &given)
{
    const std::optional<IdleTime::Minutes> parsed = IdleTime::parsed(time);
    if (!parsed)
        return wrongUse(u"“keep” takes “always” or a number of minutes, at most 10080."_s,
                        u"orvane models --help"_s);
    return CommandLine{.command = Command::KeepModel, .idleTime = *parsed, .verbose = given.verbose};
}

Parsed parseModels(const Words &given)
{
    if (given.help)
        return help(HelpTexts::modelsCommand());
    const QString helpCommand = u"orvane models --help"_s;
    const QString verb = given.words.value(1);
    if (given.words.size() > 3)
        return wrongUse(u"There are too many words after “%1”."_s.arg(verb), helpCommand);
    const QString identifier = given.words.value(2);
    if (verb.isEmpty())
        return CommandLine{.command = Command::ListModels, .verbose = given.verbose};
    if (verb == "download"_L1 && identifier.isEmpty())
        return CommandLine{.command = Command::DownloadModel, .verbose = given.verbose};
    if (verb == "download"_L1)
        return parseWithModel(Command::DownloadModel, identifier, given.verbose);
    if (verb == "select"_L1 && !identifier.isEmpty())
        return parseWithModel(Command::SelectModel, identifier, given.verbose);
    if (verb == "select"_L1)
        return wrongUse(u"Which model is to be selected?"_s, u"orvane models"_s);
    if (verb == "keep"_L1)
        return parseKeep(identifier, given);
    return wrongUse(u"“models %1” is no command."_s.arg(verb), helpCommand);
}

Parsed parseDoctor(const Words &given)
{
    if (given.help)
        return help(HelpTexts::doctorCommand());
    if (given.words.size() > 1)
        return wrongUse(u"“doctor” takes no words."_s, u"orvane doctor --help"_s);
    const auto format = given.json ? DoctorReport::Format::Json : DoctorReport::Format::Text;
    return CommandLine{.command = Command::Doctor, .format = format, .verbose = given.verbose};
}

Parsed parseIntegrate(const Words &given)
{
    using Integration = CommandLine::Integration;
    if (given.help)
        return help(HelpTexts::integrateCommand());
    if (given.words.size() > 1)
        return wrongUse(u"“integrate” takes no words."_s, u"orvane integrate --help"_s);
    const Integration integration = given.remove ? Integration::Removed : Integration::Written;
    return CommandLine{.command = Command::Integrate, .integration = integration, .verbose = given.verbose};
}

Parsed parseWindow(const Words &given)
{
    using Opening = CommandLine::Opening;
    if (given.background && given.toggle)
        return wrongUse(u"The options “--background” and “--toggle” exclude each other."_s);
    const Opening opening = given.background ? Opening::Hidden
                            : given.toggle   ? Opening::Toggled
                                             : Opening::Shown;
    return CommandLine{.command = Command::Window, .opening = opening, .verbose = given.verbose};
}

} // namespace

Parsed CommandLine::parse(const QStringList &arguments)
{
    const Words given = sorted(arguments);
    if (given.unknownOption)
        return wrongUse(u"The option “%1” is unknown."_s.arg(*given.unknownOption));
    if (given.version)
        return CommandLine{.command = Command::Version};
    const QString command = given.words.value(0);
    if (!command.isEmpty() && (given.background || given.toggle))
        return wrongUse(u"The options “--background” and “--toggle” go without a command."_s);
    if (given.json && command != "doctor"_L1)
        return wrongUse(u"The option “--json” goes with “doctor” only."_s);
    if (given.remove && command != "integrate"_L1)
        return wrongUse(u"The option “--remove” goes with “integrate” only."_s);
    if (command == "do"_L1)
        return parseDo(given);
    if (command == "models"_L1)
        return parseModels(given);
    if (command == "doctor"_L1)
        return parseDoctor(given);
    if (command == "integrate"_L1)
        return parseIntegrate(given);
    if (!command.isEmpty())
        return wrongUse(u"“%1” is no command."_s.arg(command));
    if (given.help)
        return help(HelpTexts::general());
    return parseWindow(given);
}
