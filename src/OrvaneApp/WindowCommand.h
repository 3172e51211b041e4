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

// `orvane` without a command: the window, until the user quits. Where the program runs already, that one is
// asked instead. Main thread, with a QGuiApplication; `instance` and `terminal` are not owned.
class WindowCommand : public QObject
{
    Q_OBJECT

public:
    WindowCommand(ProgramInstance &instance, Terminal &terminal, QObject *parent = nullptr);
    ~WindowCommand() override;

    // Returns at once; `finished` tells the end, if the user does not quit from the window. Once in the
    // object's life.
    void start(CommandLine::Opening opening);

    // The user wants it to end.
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
