// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "ContentView/ViewModels/DialogViewModel.h"
#include "ContentView/ViewModels/SetupViewModel.h"
#include "ContentView/ViewModels/TurnListModel.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

// State and commands of the main window: which layer is shown, texts, symbols, and the effect of buttons.
// Views only lay it out. Thread: main. The model manager, the session and the desktop are not owned and must
// outlive this object.
class ContentViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the program")
    Q_PROPERTY(Layer layer READ layer NOTIFY layerChanged)
    Q_PROPERTY(QString input READ input WRITE setInput NOTIFY inputChanged)
    Q_PROPERTY(QString placeholder READ placeholder CONSTANT)
    Q_PROPERTY(QString obstacle READ obstacle CONSTANT)
    Q_PROPERTY(bool trusted READ trusted NOTIFY trustedChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    Q_PROPERTY(QString leadingSymbol READ leadingSymbol NOTIFY isRunningChanged)
    Q_PROPERTY(QStringList suggestions READ suggestions CONSTANT)
    Q_PROPERTY(TurnListModel *turns READ turns CONSTANT)
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(QString streamPreview READ streamPreview NOTIFY streamPreviewChanged)
    Q_PROPERTY(bool isConfirming READ isConfirming NOTIFY confirmationChanged)
    Q_PROPERTY(QString confirmationReason READ confirmationReason NOTIFY confirmationChanged)
    Q_PROPERTY(DialogViewModel *dialog READ dialog CONSTANT)
    Q_PROPERTY(bool canChooseModel READ canChooseModel NOTIFY layerChanged)
    Q_PROPERTY(QString modelName READ modelName NOTIFY modelNameChanged)
    Q_PROPERTY(QStringList modelNames READ modelNames CONSTANT)
    Q_PROPERTY(int selectedModel READ selectedModel NOTIFY modelNameChanged)
    Q_PROPERTY(SetupViewModel *setup READ setup CONSTANT)
    Q_PROPERTY(QString announcement READ announcement NOTIFY announcementChanged)

public:
    // The content of the window's middle.
    enum Layer { Setup, Empty, History };
    Q_ENUM(Layer)

    ContentViewModel(ModelManager &models, AgentSession &session, const Desktop &desktop,
                     QObject *parent = nullptr);

    Layer layer() const;

    QString input() const { return m_input; }
    void setInput(const QString &input);
    QString placeholder() const;

    // Why this session allows hardly any action; empty if it allows them. Constant.
    QString obstacle() const { return m_desktop.session.obstacle().value_or(QString()); }

    // Whether this process may operate other applications. True until the desktop has answered, and where no
    // permission would help.
    bool trusted() const { return m_trusted; }

    bool isRunning() const { return m_session.isRunning(); }
    QString leadingSymbol() const;
    QStringList suggestions() const;

    TurnListModel *turns() { return &m_turns; }
    // With visible marks for invisible characters.
    QString status() const;
    QString streamPreview() const;

    bool isConfirming() const { return m_session.pending().has_value(); }
    QString confirmationReason() const;

    // A script's question.
    DialogViewModel *dialog() { return &m_dialog; }

    // Whether the footer offers the model menu.
    bool canChooseModel() const;
    QString modelName() const;
    QStringList modelNames() const;
    int selectedModel() const { return m_setup.selectedModel(); } // index into `modelNames`

    SetupViewModel *setup() { return &m_setup; }

    // Text for screen readers: the latest step, result, failure or question.
    QString announcement() const { return m_announcement; }

    // The window is shown for the first time.
    void appear();
    // The window was summoned; the user wants to type.
    void summoned();
    // The program became active; the user may have changed the system's settings.
    void becameActive();

    // Submits the field's text if a model is loaded; otherwise keeps the text.
    Q_INVOKABLE void send();
    // Stops the task; also declines a pending confirmation.
    Q_INVOKABLE void stop();
    // Answers the confirmation.
    Q_INVOKABLE void resolve(bool approved);
    // Puts an example into the command field.
    Q_INVOKABLE void useSuggestion(int suggestion);
    Q_INVOKABLE void grantAccess();
    // No effect while a task runs: it uses the selected model and the history.
    Q_INVOKABLE void selectModel(int choice);
    Q_INVOKABLE void clearHistory();

Q_SIGNALS:
    void layerChanged();
    void inputChanged();
    void trustedChanged();
    void isRunningChanged();
    void statusChanged();
    void streamPreviewChanged();
    void confirmationChanged();
    void modelNameChanged();
    void announcementChanged();
    // The command field should take the keyboard focus.
    void focusRequested();

private:
    QCoro::Task<void> refreshTrust();
    QCoro::Task<void> askForTrust();
    void announce(const QString &text);
    void announceEntry(int turnIndex, int entryIndex);
    void announceFailure(int turnIndex, int entryIndex);
    void announceSummary(int turnIndex);

    ModelManager &m_models;
    AgentSession &m_session;
    const Desktop m_desktop;
    TurnListModel m_turns;
    SetupViewModel m_setup;
    DialogViewModel m_dialog;
    QString m_input;
    QString m_announcement;
    bool m_trusted = true;
    QCoro::Task<void> m_loading;
    QCoro::Task<void> m_trust;
};
