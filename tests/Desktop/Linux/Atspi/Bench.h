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

// The accessibility service with what tests need around it: other programs and walks through their trees.
// Main thread.
class AtspiBench : public AtspiEnvironment
{
public:
    using Tree = std::shared_ptr<AccessibilityTree>;
    // A program that is ended, however the test ends.
    using Program = std::unique_ptr<QProcess, void (*)(QProcess *)>;

    // How long a test waits for what must happen in the end: long, for a slow machine that is busy.
    static constexpr int patience = 30'000; // milliseconds

    // A tree with its nodes in breadth-first order, read level by level.
    struct Walk
    {
        QList<AccessibilityElement> elements;
        QList<AccessibilityAttributes> attributes;
    };

    static Program start(const QString &program, const QStringList &arguments = {});

    // None while the application has no tree.
    Tree tree(const QProcess &program);
    static QCoro::Task<Walk> walk(Tree tree, qsizetype most = 100'000);
    static QList<WalkedNode> nodes(const Walk &walk);
    static QString label(const AccessibilityAttributes &attributes);

    // The labels of that role on the application's whole tree at this moment, in its order.
    QStringList labels(const QProcess &program, const QString &role);
    bool waitForLabel(const QProcess &program, const QString &role, const QString &label);
    // Presses the first element of that role and label, and says what the tree said.
    bool press(const QProcess &program, const QString &role, const QString &label);

    QCoro::Task<bool> canSendKeys() override;
    QCoro::Task<void> activate(qint64 processIdentifier) override; // only notes it
    // A real key, as soon as the application is in front.
    QCoro::Task<bool> strikeKey(qint64 processIdentifier, std::uint16_t virtualKey) override;
    QCoro::Task<QStringList> titlesInFront(qint64 processIdentifier) override;

    // The sentence of the error that the task ends with; empty when it succeeds.
    template <typename Result>
    static QString errorOf(QCoro::Task<Result> task);

    bool hasKeys = true;
    QList<qint64> activations;
    AtspiAccessibility accessibility{*this};

private:
    // Made when a key is needed: there is no X server around every test.
    struct RealKeyboard
    {
        SystemClock clock;
        X11Display display{clock};
        LinuxKeyboard keyboard{display};
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
