// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/CommandRunner.h"

#include "Base/LocalizedError.h"
#include "Inference/LlamaEngine.h"
#include "Inference/LlamaLog.h"
#include "Models/HttpDownloadSession.h"
#include "OrvaneApp/DoCommand.h"
#include "OrvaneApp/DownloadCommand.h"
#include "OrvaneApp/ExitStatus.h"
#include "OrvaneApp/ModelsCommand.h"
#include "OrvaneApp/Platform.h"
#include "OrvaneApp/SignalWatcher.h"

#include <QCoreApplication>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The model manager with the real engine and the real network. The engine gives its memory back before it
// goes.
class RealModels
{
public:
    ~RealModels() { manager.engine().unload(); }

    const ModelStorage storage = ModelStorage::standard();
    ModelManager manager{std::make_unique<LlamaEngine>(),
                         std::make_unique<HttpDownloadSession>(storage.downloadsDirectory()), storage};
};

// Starts the command and runs the event loop until it has finished.
template <typename Command, typename... Arguments>
int carriedOut(Command &command, const Arguments &...arguments)
{
    const SignalWatcher signalWatcher;
    QObject::connect(&signalWatcher, &SignalWatcher::interrupted, &command, &Command::interrupt);
    // Queued, since a command may finish before the loop runs.
    QObject::connect(&command, &Command::finished, QCoreApplication::instance(), &QCoreApplication::exit,
                     Qt::QueuedConnection);
    command.start(arguments...);
    return QCoreApplication::exec();
}

int doTask(ModelManager &models, const QString &task, Terminal &terminal)
{
    if (models.state().kind == ModelManager::State::Kind::needsDownload) {
        DoCommand::reportNotReady(models, terminal);
        return ExitStatus::notReady;
    }
    const std::unique_ptr<DesktopServices> services = Platform::connectToDesktop();
    AgentSession session(models, services->desktop());
    AnswerReader answers(STDIN_FILENO);
    DoCommand command(models, session, terminal, answers);
    return carriedOut(command, task);
}

int download(ModelManager &models, const QString &modelIdentifier, Terminal &terminal)
{
    if (!modelIdentifier.isEmpty())
        models.select(LocalModel::withIdentifier(modelIdentifier));
    DownloadCommand command(models, terminal);
    return carriedOut(command);
}

int carryOut(const CommandLine &commandLine, ModelManager &models, Terminal &terminal)
{
    using Command = CommandLine::Command;
    switch (commandLine.command) {
    case Command::Do:
        return doTask(models, commandLine.task, terminal);
    case Command::DownloadModel:
        return download(models, commandLine.modelIdentifier, terminal);
    case Command::SelectModel:
        return ModelsCommand::select(models, LocalModel::withIdentifier(commandLine.modelIdentifier),
                                     terminal);
    case Command::ListModels:
        return ModelsCommand::list(models, terminal);
    case Command::Help:
    case Command::Version:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

int CommandRunner::run(const CommandLine &commandLine, Terminal &terminal)
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
    if (!commandLine.verbose && qEnvironmentVariableIsEmpty("ORVANE_VERBOSE"))
        LlamaLog::keepErrorsOnly();
    try {
        RealModels models;
        return carryOut(commandLine, models.manager, terminal);
    } catch (const LocalizedError &error) {
        terminal.error(error.errorDescription());
        return ExitStatus::endedOtherwise;
    }
}
