// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <optional>

// Reads a yes or no, or any line, from a terminal without blocking. Thread: main. The descriptor is not
// owned.
class AnswerReader : public QObject
{
    Q_OBJECT

public:
    explicit AnswerReader(int descriptor, QObject *parent = nullptr);
    ~AnswerReader() override;

    // Whether the descriptor is a terminal.
    bool canAsk() const;

    enum class Expected { YesOrNo, AnyLine };

    // Starts waiting for an answer; discards input typed before.
    void start(Expected expected = Expected::YesOrNo);
    void cancel();

    // "y" or "yes", "n" or "no" in any letter case; otherwise nothing.
    static std::optional<bool> meaning(const QByteArray &line);

Q_SIGNALS:
    // Exactly one of these is emitted for each `start`, unless cancelled.
    void answered(bool yes);
    // Other input; the question should be repeated.
    void notUnderstood();
    // Any line, or the end of input before one.
    void typed(const QString &line);
    void closed();

private:
    void readMore();
    void take(const QByteArray &line);

    const int m_descriptor;
    Expected m_expected = Expected::YesOrNo;
    QByteArray m_typed;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
