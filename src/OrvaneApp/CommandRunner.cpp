// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandRunner.h"

#include "Base/LocalizedError.h"
#include "Inference/Llama/LlamaLog.h"
#include "OrvaneApp/CommandLine/DoCommand.h"
#include "OrvaneApp/CommandLine/DoctorCommand.h"
#include "OrvaneApp/CommandLine/DownloadCommand.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"
#include "OrvaneApp/CommandLine/ModelsCommand.h"
#include "OrvaneApp/CommandLine/SignalWatcher.h"
#include "OrvaneApp/Platform.h"
#include "OrvaneApp/RealModels.h"
#include "OrvaneApp/WindowCommand.h"

#include <QCoreApplication>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// Starts the command and runs the event loop until it finishes.
template <typename Command, typename... Arguments>
int carriedOut(Command &command, const Arguments &...arguments)
{
    const SignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &SignalWatcher::interrupted, &command, &Command::interrupt);
    // Queued, because a command may finish before the event loop runs.
    QObject::connect(&command, &Command::finished, QCoreApplication::instance(), &QCoreApplication::exit,
                     Qt::QueuedConnection);
    command.start(arguments...);
    return QCoreApplication::exec();
}

int doTask(ModelManager &models, const QString &task, Terminal &terminal)
{
    if (const std::optional<QString> obstacle = Platform::sessionObstacle()) {
        terminal.error(*obstacle);
        return ExitStatus::endedOtherwise;
    }
    if (models.state().kind == ModelManager::State::Kind::NeedsDownload) {
        DoCommand::reportNotReady(models, terminal);
        return ExitStatus::notReady;
    }
    const std::unique_ptr<DesktopServices> services = Platform::connectToDesktop();
    const Desktop desktop = services->desktop();
    AgentSession session(models, desktop);
    AnswerReader answers(STDIN_FILENO);
    DoCommand command(models, session, desktop.dialogs, terminal, answers);
    return carriedOut(command, task);
}

int examine(const ModelManager &models, DoctorReport::Format format, Terminal &terminal)
{
    const std::unique_ptr<Diagnosis> diagnosis = Platform::diagnosis();
    DoctorCommand command(models, *diagnosis, &LlamaLibrary::describe, terminal);
    return carriedOut(command, format);
}

int showWindow(CommandLine::Opening opening, ProgramInstance &instance, Terminal &terminal)
{
    WindowCommand command(instance, terminal);
    return carriedOut(command, opening);
}

int download(ModelManager &models, const QString &modelIdentifier, Terminal &terminal)
{
    if (!modelIdentifier.isEmpty())
        models.select(LocalModel::withIdentifier(modelIdentifier));
    DownloadCommand command(models, terminal);
    return carriedOut(command);
}

int integrate(CommandLine::Integration integration, Terminal &terminal)
{
    const bool isRemoved = integration == CommandLine::Integration::Removed;
    terminal.line(isRemoved ? Platform::undoIntegration() : Platform::integrate());
    return ExitStatus::done;
}

int carryOut(const CommandLine &commandLine, RealModels &realModels, Terminal &terminal)
{
    using Command = CommandLine::Command;
    ModelManager &models = realModels.manager();
    const ModelStorage &storage = realModels.storage();
    switch (commandLine.command) {
    case Command::Do:
        return doTask(models, commandLine.task, terminal);
    case Command::DownloadModel:
        return download(models, commandLine.modelIdentifier, terminal);
    case Command::SelectModel:
        return ModelsCommand::select(models, LocalModel::withIdentifier(commandLine.modelIdentifier),
                                     terminal);
    case Command::ListModels:
        return ModelsCommand::list(models, IdleTime::chosen(storage), terminal);
    case Command::KeepModel:
        return ModelsCommand::keep(storage, commandLine.idleTime, terminal);
    case Command::Doctor:
        return examine(models, commandLine.format, terminal);
    case Command::Integrate:
        return integrate(commandLine.integration, terminal);
    case Command::Help:
    case Command::Version:
    case Command::Window:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

int CommandRunner::run(const CommandLine &commandLine, ProgramInstance *instance, Terminal &terminal)
{
    if (commandLine.command == CommandLine::Command::Help) {
        for (const QString &line : commandLine.helpText.trimmed().split(u'\n'))
            terminal.line(line);
        return ExitStatus::done;
    }
    if (commandLine.command == CommandLine::Command::Version) {
        terminal.line(u"orvane "_s + QCoreApplication::applicationVersion());
        return ExitStatus::done;
    }
    const bool isVerbose = commandLine.verbose || !qEnvironmentVariableIsEmpty("ORVANE_VERBOSE");
    LlamaLog::keep(isVerbose ? LlamaLog::Kept::Everything : LlamaLog::Kept::Errors);
    if (commandLine.command == CommandLine::Command::Window)
        return showWindow(commandLine.opening, *instance, terminal);
    try {
        RealModels models;
        return carryOut(commandLine, models, terminal);
    } catch (const LocalizedError &error) {
        terminal.error(error.errorDescription());
        return ExitStatus::endedOtherwise;
    }
}
