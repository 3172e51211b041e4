// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Agent/AgentSession.h"
#include "ContentView/ViewModels/SetupViewModel.h"
#include "ContentView/ViewModels/TurnListModel.h"

#include <QObject>
#include <QStringList>
#include <QtQmlIntegration>

// Everything that the main window shows and does: which layer lies in the middle, which texts and symbols,
// and what a button means. The views only lay it out. Main thread; the model manager, the session and the
// desktop are not owned and outlive this object.
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
    Q_PROPERTY(bool canChooseModel READ canChooseModel NOTIFY layerChanged)
    Q_PROPERTY(QString modelName READ modelName NOTIFY modelNameChanged)
    Q_PROPERTY(QStringList modelNames READ modelNames CONSTANT)
    Q_PROPERTY(int selectedModel READ selectedModel NOTIFY modelNameChanged)
    Q_PROPERTY(SetupViewModel *setup READ setup CONSTANT)
    Q_PROPERTY(QString announcement READ announcement NOTIFY announcementChanged)

public:
    // What fills the middle of the window.
    enum Layer { Setup, Empty, History };
    Q_ENUM(Layer)

    ContentViewModel(ModelManager &models, AgentSession &session, const Desktop &desktop,
                     QObject *parent = nullptr);

    Layer layer() const;

    QString input() const { return m_input; }
    void setInput(const QString &input);
    QString placeholder() const;

    // Why this session lets hardly any action work, for as long as it lasts; empty where it lets them.
    QString obstacle() const { return m_desktop.session.obstacle().value_or(QString()); }

    // Whether this process may operate other applications; taken as given until the desktop has answered, and
    // where no permission would help.
    bool trusted() const { return m_trusted; }

    bool isRunning() const { return m_session.isRunning(); }
    QString leadingSymbol() const;
    QStringList suggestions() const;

    TurnListModel *turns() { return &m_turns; }
    // With visible marks in the place of what could not be seen.
    QString status() const;
    QString streamPreview() const;

    bool isConfirming() const { return m_session.pending().has_value(); }
    QString confirmationReason() const;

    // Whether the footer offers the models.
    bool canChooseModel() const;
    QString modelName() const;
    QStringList modelNames() const;
    int selectedModel() const { return m_setup.selectedModel(); } // an index of `modelNames`

    SetupViewModel *setup() { return &m_setup; }

    // What a screen reader says next: the latest step, result or failure, or the question.
    QString announcement() const { return m_announcement; }

    // The window is shown for the first time.
    void appear();
    // The window was summoned: the user wants to type.
    void summoned();
    // The program has become the active one; the user may come from the system's settings.
    void becameActive();

    // Submits the field's text, if there is a model to plan with; else the text stays.
    Q_INVOKABLE void send();
    // The stop button: also refuses what waits for approval.
    Q_INVOKABLE void stop();
    // The user's answer to the confirmation.
    Q_INVOKABLE void resolve(bool approved);
    // Puts an example into the field; the user sends it.
    Q_INVOKABLE void useSuggestion(int suggestion);
    Q_INVOKABLE void grantAccess();
    // These do nothing while a task runs: it plans with the selected model, and writes into the history.
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
    // The command field is to take the keyboard focus.
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
    QString m_input;
    QString m_announcement;
    bool m_trusted = true;
    QCoro::Task<void> m_loading;
    QCoro::Task<void> m_trust;
};
