// SPDX-License-Identifier: Apache-2.0
#include "wayland/Comparison.h"

#include "Base/LocalizedError.h"
#include "applications/support/PrivateDesktop.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <vector>

using Time = std::chrono::steady_clock;

namespace {

double millisecondsSince(Time::time_point start)
{
    return std::chrono::duration<double, std::milli>(Time::now() - start).count();
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace

double Comparison::timed(const std::function<void()> &begin, const std::function<bool()> &isDone)
{
    const auto start = Time::now();
    begin();
    while (!isDone()) {
        QCoreApplication::processEvents();
        if (millisecondsSince(start) > PrivateDesktop::patience)
            qFatal("An effect fails to appear.");
    }
    return millisecondsSince(start);
}

void Comparison::compare(benchmark::State &state, const Measurement &ours, const Measurement &plain)
{
    std::vector<double> own;
    std::vector<double> other;
    for ([[maybe_unused]] auto round : state) {
        try {
            own.push_back(ours());
        } catch (const LocalizedError &refusal) {
            return state.SkipWithError(refusal.errorDescription().toUtf8().constData());
        }
        if (plain)
            other.push_back(plain());
        state.SetIterationTime(own.back() / 1000);
    }
    state.counters["orvane_ms"] = median(own);
    state.counters["longest_ms"] = *std::ranges::max_element(own);
    if (!plain)
        return;
    state.counters["plain_ms"] = median(other);
    state.counters["ratio"] = median(own) / median(other);
}

void Comparison::require(bool isTrue, const char *failure)
{
    if (!isTrue)
        qFatal("%s", failure);
}
