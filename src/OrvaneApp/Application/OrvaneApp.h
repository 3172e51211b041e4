// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "ContentView/ViewModels/ContentViewModel.h"
#include "OrvaneApp/Application/ActivityReport.h"
#include "OrvaneApp/Application/AppDelegate.h"
#include "OrvaneApp/Application/IdleModel.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

// The application with its session and window. Thread: main. The model manager and the services are not owned
// and must outlive this object.
class OrvaneApp : public QObject
{
    Q_OBJECT

public:
    // `patience` says how long the model stays in memory without a task.
    OrvaneApp(ModelManager &models, const Desktop &desktop, const Shell &shell, ProgramInstance &instance,
              IdleModel::Patience patience, QObject *parent = nullptr);
    ~OrvaneApp() override;

    // Creates the window. Throws PlatformError if the views cannot be loaded.
    void start(AppDelegate::StartUp startUp);

    AgentSession &session() { return m_session; }

    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void loadWindow();
    void followTheDesktop();

    const Shell m_shell;
    AgentSession m_session;
    ActivityReport m_activityReport;
    IdleModel m_idleModel;
    ContentViewModel m_content;
    AppDelegate m_delegate;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};
