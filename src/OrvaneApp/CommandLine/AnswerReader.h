// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <optional>

// Reads the user's yes or no from a terminal while the event loop goes on. Main thread; the descriptor is not
// owned.
class AnswerReader : public QObject
{
    Q_OBJECT

public:
    explicit AnswerReader(int descriptor, QObject *parent = nullptr);
    ~AnswerReader() override;

    // Whether there is a person to ask.
    bool canAsk() const;

    // Begins to wait for an answer. What was typed before the question is no answer to it and is dropped.
    void start();
    void cancel();

    // "y" or "yes", "n" or "no" in any letter case; anything else is no answer.
    static std::optional<bool> meaning(const QByteArray &line);

Q_SIGNALS:
    // Exactly one of these for each `start`, unless it is cancelled.
    void answered(bool yes);
    // The user has typed something else and is to be asked again.
    void notUnderstood();

private:
    void readMore();
    void take(const QByteArray &line);

    const int m_descriptor;
    QByteArray m_typed;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
