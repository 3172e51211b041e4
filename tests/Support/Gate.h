// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroFuture>
#include <QCoroTask>
#include <QFuture>
#include <QPromise>

// Holds coroutines: those that await `passed` continue after `open`, from the event loop. Not thread-safe.
class Gate
{
public:
    Gate() { m_promise.start(); }
    ~Gate() { open(); }
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;

    void open()
    {
        if (!m_promise.future().isFinished())
            m_promise.finish();
    }

    QCoro::Task<void> passed()
    {
        const QFuture<void> future = m_promise.future();
        co_await future;
    }

private:
    QPromise<void> m_promise;
};
