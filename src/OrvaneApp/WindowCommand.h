// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "OrvaneApp/Application/OrvaneApp.h"
#include "OrvaneApp/CommandLine/CommandLine.h"
#include "OrvaneApp/CommandLine/Terminal.h"
#include "OrvaneApp/Platform.h"
#include "OrvaneApp/RealModels.h"

#include <QCoroTask>
#include <QObject>

#include <memory>

// `orvane` without a command: shows the window until the user quits, or forwards the request to a running
// instance. Thread: main, with a QGuiApplication; `instance` and `terminal` are not owned.
class WindowCommand : public QObject
{
    Q_OBJECT

public:
    WindowCommand(ProgramInstance &instance, Terminal &terminal, QObject *parent = nullptr);
    ~WindowCommand() override;

    // Asynchronous; ends with `finished` unless the user quits from the window. Call once.
    void start(CommandLine::Opening opening);

    // Ends the program.
    void interrupt();

Q_SIGNALS:
    void finished(int exitStatus);

private:
    QCoro::Task<void> begin(CommandLine::Opening opening);
    void openWindow(CommandLine::Opening opening);

    ProgramInstance &m_instance;
    Terminal &m_terminal;
    // Each uses those above it.
    std::unique_ptr<RealModels> m_models;
    std::unique_ptr<DesktopServices> m_desktop;
    std::unique_ptr<ShellServices> m_shell;
    std::unique_ptr<OrvaneApp> m_application;
    QCoro::Task<void> m_beginning;
};
