// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

// Turns the first Ctrl+C (or the first request of the system to end) into a signal on the main thread; a
// second one of the same kind ends the program at once, whatever it is doing. One object a process, on the
// main thread.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

Q_SIGNALS:
    void interrupted();

private:
    int m_readEnd = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
