// SPDX-License-Identifier: Apache-2.0
#include "OrvaneApp/WindowCommand.h"

#include "Base/LocalizedError.h"
#include "Models/IdleTime.h"
#include "OrvaneApp/CommandLine/ExitStatus.h"

#include <QPointer>

using Opening = CommandLine::Opening;

namespace {

InstanceRequest requestFor(Opening opening)
{
    switch (opening) {
    case Opening::Shown:
        return InstanceRequest::Activate;
    case Opening::Toggled:
        return InstanceRequest::Toggle;
    case Opening::Hidden:
        return InstanceRequest::Nothing;
    }
    Q_UNREACHABLE();
}

} // namespace

WindowCommand::WindowCommand(ProgramInstance &instance, Terminal &terminal, QObject *parent)
    : QObject(parent), m_instance(instance), m_terminal(terminal)
{
}

WindowCommand::~WindowCommand() = default;

void WindowCommand::start(Opening opening)
{
    m_beginning = begin(opening);
}

void WindowCommand::interrupt()
{
    Q_EMIT finished(ExitStatus::done);
}

QCoro::Task<void> WindowCommand::begin(Opening opening)
{
    const QPointer<WindowCommand> self(this);
    try {
        const InstanceRequest request = requestFor(opening);
        const InstanceStanding standing = co_await m_instance.claim(request);
        if (!self)
            co_return;
        if (standing == InstanceStanding::Later)
            Q_EMIT finished(ExitStatus::done);
        else
            openWindow(opening);
    } catch (const LocalizedError &error) {
        m_terminal.error(error.errorDescription());
        Q_EMIT finished(ExitStatus::endedOtherwise);
    }
}

void WindowCommand::openWindow(Opening opening)
{
    m_models = std::make_unique<RealModels>();
    m_desktop = Platform::connectToDesktop();
    m_shell = Platform::connectToShell();
    const auto patience = [this] { return IdleTime::chosen(m_models->storage()); };
    m_application = std::make_unique<OrvaneApp>(m_models->manager(), m_desktop->desktop(), m_shell->shell(),
                                                m_instance, patience);
    m_application->start(opening == Opening::Hidden ? AppDelegate::StartUp::Hidden
                                                    : AppDelegate::StartUp::Shown);
}
