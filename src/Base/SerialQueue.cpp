// SPDX-License-Identifier: Apache-2.0
#include "Base/SerialQueue.h"

#include <QLoggingCategory>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(queueLog, "orvane.queue")

// A failing job must not end the thread: later jobs are waiting.
void carryOut(const std::function<void()> &job)
{
    try {
        job();
    } catch (const std::exception &error) {
        qCCritical(queueLog, "A job of \"%s\" failed: %s",
                   qUtf8Printable(QThread::currentThread()->objectName()), error.what());
    }
}

} // namespace

SerialQueue::SerialQueue(const QString &name) : m_thread(QThread::create([this] { work(); }))
{
    m_thread->setObjectName(name);
    m_thread->start();
}

SerialQueue::~SerialQueue()
{
    finish();
}

void SerialQueue::finish()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    m_thread->wait();
}

void SerialQueue::post(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void SerialQueue::work()
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        {
            // The job and its captures are destroyed before the next one starts.
            const std::function<void()> job = std::move(m_jobs.front());
            m_jobs.pop_front();
            lock.unlock();
            carryOut(job);
        }
        lock.lock();
    }
}
