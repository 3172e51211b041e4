// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QTest>

#include <exception>
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
    } catch (...) {
        outcome->exception = std::current_exception();
    }
}

template <typename T>
T result(QCoro::Task<T> task)
{
    const auto outcome = std::make_shared<Outcome<T>>();
    const QCoro::Task<void> settling = settle(std::move(task), outcome);
    if (!QTest::qWaitFor([&] { return outcome->isSettled(); }, timeoutMilliseconds))
        throw std::runtime_error("A task did not end in time");
    if (outcome->exception)
        std::rethrow_exception(outcome->exception);
    if constexpr (!std::is_void_v<T>)
        return *std::move(outcome->value);
}

} // namespace Awaited
