// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/Atspi/Accessibility.h"
#include "Desktop/Linux/Atspi/Environment.h"
#include "Desktop/Linux/Atspi/NodeByNode.h"
#include "Desktop/Linux/Typing/LinuxKeyboard.h"
#include "Desktop/SystemClock.h"
#include "Support/Awaited.h"

#include <QCoroTask>
#include <QList>
#include <QProcess>
#include <QStringList>

#include <memory>
#include <optional>

// The accessibility service, and what tests need besides: other programs and traversals of their trees.
// Thread: main.
class AtspiBench : public AtspiEnvironment
{
public:
    using Tree = std::shared_ptr<AccessibilityTree>;
    // A process that is killed at the end of its scope.
    using Program = std::unique_ptr<QProcess, void (*)(QProcess *)>;

    // The timeout for awaited conditions; long enough for a slow, busy machine.
    static constexpr int patience = 30'000; // milliseconds

    // The elements of a tree in breadth-first order.
    struct Walk
    {
        QList<AccessibilityElement> elements;
        QList<AccessibilityAttributes> attributes;
    };

    static Program start(const QString &program, const QStringList &arguments = {});

    // Null while the application has no tree.
    Tree tree(const QProcess &program);
    static QCoro::Task<Walk> walk(Tree tree, qsizetype most = 100'000);
    static QList<WalkedNode> nodes(const Walk &walk);
    static QString label(const AccessibilityAttributes &attributes);

    // The labels of all elements with this role in the application's current tree, in tree order.
    QStringList labels(const QProcess &program, const QString &role);
    bool waitForLabel(const QProcess &program, const QString &role, const QString &label);
    // Presses the first element with this role and label; returns the result.
    bool press(const QProcess &program, const QString &role, const QString &label);

    QCoro::Task<bool> canSendKeys() override;
    QCoro::Task<void> activate(RunningApplication application) override; // only records it
    // Waits until the application is frontmost, then sends a real key.
    QCoro::Task<bool> strikeKey(RunningApplication application, std::uint16_t virtualKey) override;
    QCoro::Task<AtspiTitles> titles(RunningApplication application) override;

    // The message of the task's PlatformError; empty if it succeeds.
    template <typename Result>
    static QString errorOf(QCoro::Task<Result> task);

    bool hasKeys = true;
    AtspiTitles windowTitles; // of every application
    QList<qint64> activations;
    AtspiAccessibility accessibility{*this};

private:
    // Created on demand, since not every test has an X server.
    struct RealKeyboard
    {
        SystemClock clock;
        X11Display display{clock};
        LinuxKeyboard keyboard{display, [this] { return frontmostWindow(); }};

        QCoro::Task<std::optional<DesktopWindow>> frontmostWindow();
    };
    std::unique_ptr<RealKeyboard> m_keyboard;
};

namespace AtspiBenchDetails {
QCoro::Task<QString> caught(QCoro::Task<void> task);

template <typename Result>
QCoro::Task<void> withoutResult(QCoro::Task<Result> task)
{
    co_await task;
}
} // namespace AtspiBenchDetails

template <typename Result>
QString AtspiBench::errorOf(QCoro::Task<Result> task)
{
    return Awaited::result(AtspiBenchDetails::caught(AtspiBenchDetails::withoutResult(std::move(task))));
}
