// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <chrono>
#include <initializer_list>
#include <memory>
#include <utility>

class LinuxDesktop;

// The outcome of an action: its result line or error message.
struct Outcome
{
    QString line;
    bool hasFailed = false;
    std::chrono::milliseconds duration{};
    std::chrono::milliseconds standstill{}; // the longest time the event loop was blocked
};

// Whether an error message is fit for users: a single line that ends with a full stop.
bool isOneClearLine(const QString &line);

// Runs actions on the real desktop, as the agent does for a model's reply. Thread: main.
class ActionRunner
{
public:
    using Arguments = std::initializer_list<std::pair<const char *, QString>>;

    ActionRunner();
    ~ActionRunner();
    ActionRunner(const ActionRunner &) = delete;
    ActionRunner &operator=(const ActionRunner &) = delete;

    // Runs the event loop until the action ends.
    Outcome perform(const char *action, Arguments arguments = {});

private:
    std::unique_ptr<LinuxDesktop> m_desktop;
};
