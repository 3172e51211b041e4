// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/LocalizedError.h"

#include <QCoroTask>
#include <QEventLoop>
#include <QTimer>

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

// Runs the event loop until a task is done; returns its result or throws its exception. (QCoro::waitFor never
// returns if the task throws.)
namespace Awaited {

// Timeout of a task in a test.
inline constexpr int timeoutMilliseconds = 60'000;

template <typename T>
struct Outcome
{
    std::optional<std::conditional_t<std::is_void_v<T>, bool, T>> value;
    std::exception_ptr exception;
    std::function<void()> onSettled = [] {};

    bool isSettled() const { return value || exception; }
};

template <typename T>
QCoro::Task<void> settle(QCoro::Task<T> task, std::shared_ptr<Outcome<T>> outcome)
{
    try {
        if constexpr (std::is_void_v<T>) {
            co_await task;
            outcome->value = true;
        } else {
            outcome->value = co_await task;
        }
    } catch (const LocalizedError &error) {
        // Qt Test does not say what an unexpected exception was.
        qInfo("A task ended with: %s", qUtf8Printable(error.errorDescription()));
        outcome->exception = std::current_exception();
    } catch (...) {
        outcome->exception = std::current_exception();
    }
    outcome->onSettled();
}

// Waits; returns whether the task has settled in time.
template <typename T>
bool waitFor(const std::shared_ptr<Outcome<T>> &outcome)
{
    if (outcome->isSettled())
        return true;
    QEventLoop loop;
    outcome->onSettled = [&loop] { loop.quit(); };
    QTimer::singleShot(timeoutMilliseconds, &loop, &QEventLoop::quit);
    loop.exec();
    outcome->onSettled = [] {};
    return outcome->isSettled();
}

template <typename T>
T result(QCoro::Task<T> task)
{
    const auto outcome = std::make_shared<Outcome<T>>();
    const QCoro::Task<void> settling = settle(std::move(task), outcome);
    if (!waitFor(outcome))
        throw std::runtime_error("A task that the test waits for did not end within a minute");
    if (outcome->exception)
        std::rethrow_exception(outcome->exception);
    if constexpr (!std::is_void_v<T>)
        return *std::move(outcome->value);
}

} // namespace Awaited
