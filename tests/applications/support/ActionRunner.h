// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <chrono>
#include <initializer_list>
#include <memory>
#include <utility>

class LinuxDesktop;

// How an action ended: its result line, or the sentence of its error.
struct Outcome
{
    QString line;
    bool hasFailed = false;
    std::chrono::milliseconds duration{};
    std::chrono::milliseconds standstill{}; // of the event loop, the longest one
};

// Whether a failure is said as users are to read it: one line, one sentence.
bool isOneClearLine(const QString &line);

// Carries out actions on the real desktop, just as the agent does for a model's reply. Main thread.
class ActionRunner
{
public:
    using Arguments = std::initializer_list<std::pair<const char *, QString>>;

    ActionRunner();
    ~ActionRunner();
    ActionRunner(const ActionRunner &) = delete;
    ActionRunner &operator=(const ActionRunner &) = delete;

    // Waits for the end, with the event loop running.
    Outcome perform(const char *action, Arguments arguments = {});

private:
    std::unique_ptr<LinuxDesktop> m_desktop;
};
