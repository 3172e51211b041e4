// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QPromise>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <optional>

// A question of a script to the user. Texts come from the script, as they are: prepare them before display.
struct Dialog
{
    static constexpr int noButton = -1;

    QString title; // may be empty
    QString text;
    QString message;              // further explanation; may be empty
    QStringList buttons;          // from left to right; at least one
    int defaultButton = noButton; // pressed by Return
    int cancelButton = noButton;  // pressed by Escape

    std::optional<QString> answer; // the text field's initial text; nothing: no field
    bool hidesAnswer = false;

    std::optional<QStringList> items; // to choose from; nothing: no list
    QList<int> chosen;                // at first
    bool takesSeveral = false;
    bool takesNone = false; // the default button may be pressed without a choice

    std::optional<std::chrono::milliseconds> givesUpAfter;
};

struct DialogAnswer
{
    int button = Dialog::noButton; // none if the dialog gave up
    QString text;
    QList<int> chosen; // indices, in the list's order
};

// Carries a script's question to whoever talks to the user, on every platform where scripts don't bring their
// own dialogs. One question at a time. Thread: main.
class Dialogs : public QObject
{
    Q_OBJECT

public:
    Dialogs();
    // Withdraws a pending dialog.
    ~Dialogs() override;

    // Returns the answer, or nothing if the dialog was withdrawn. Throws PlatformError if there is nobody to
    // ask.
    QCoro::Task<std::optional<DialogAnswer>> ask(Dialog dialog);

    // Set while an answer is awaited.
    const std::optional<Dialog> &pending() const { return m_pending; }

    // Both do nothing without a pending dialog.
    void answer(const DialogAnswer &answer) { settle(answer); }
    void withdraw() { settle(std::nullopt); }

Q_SIGNALS:
    // Whoever connects to this can ask the user.
    void pendingChanged();

private:
    void settle(const std::optional<DialogAnswer> &answer);
    void giveUp();

    std::optional<Dialog> m_pending;
    std::optional<QPromise<std::optional<DialogAnswer>>> m_promise;
    QTimer m_patience;
};
