// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Bench.h"

#include "Desktop/PlatformError.h"
#include "Support/Awaited.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>

namespace {

void end(QProcess *process)
{
    process->kill();
    process->waitForFinished();
    delete process;
}

QCoro::Task<AtspiBench::Tree> treeOrNone(AtspiAccessibility *accessibility, qint64 processIdentifier)
{
    try {
        const RunningApplication application{processIdentifier};
        co_return co_await accessibility->applicationTree(application);
    } catch (const PlatformError &) {
        co_return AtspiBench::Tree();
    }
}

} // namespace

QCoro::Task<bool> AtspiBench::strikeKey(RunningApplication application, std::uint16_t virtualKey)
{
    if (!m_keyboard)
        m_keyboard = std::make_unique<RealKeyboard>();
    QElapsedTimer waiting;
    waiting.start();
    bool isInFront = false;
    while (!isInFront && !waiting.hasExpired(patience)) {
        const WindowSnapshot snapshot = co_await m_keyboard->display.snapshot();
        isInFront = snapshot.active() && snapshot.active()->process == application.processIdentifier;
    }
    co_return co_await m_keyboard->keyboard.strike(virtualKey, application);
}

QCoro::Task<AtspiTitles> AtspiBench::titles(RunningApplication)
{
    co_return windowTitles;
}

QCoro::Task<bool> AtspiBench::canSendKeys()
{
    co_return hasKeys;
}

QCoro::Task<void> AtspiBench::activate(RunningApplication application)
{
    activations.append(application.processIdentifier);
    co_return;
}

AtspiBench::Program AtspiBench::start(const QString &program, const QStringList &arguments)
{
    Program process(new QProcess, &end);
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(program, arguments);
    process->waitForStarted();
    return process;
}

AtspiBench::Tree AtspiBench::tree(const QProcess &program)
{
    return Awaited::result(treeOrNone(&accessibility, program.processId()));
}

QCoro::Task<AtspiBench::Walk> AtspiBench::walk(Tree tree, qsizetype most)
{
    Walk walk;
    QList<AccessibilityElement> level{tree->root()};
    while (!level.isEmpty()) {
        level = level.first(std::min(level.size(), most - walk.elements.size()));
        const QList<AccessibilityAttributes> read = co_await tree->read(level);
        walk.elements += level;
        walk.attributes += read;
        level.clear();
        for (const AccessibilityAttributes &attributes : read)
            level += attributes.children;
    }
    co_return walk;
}

QString AtspiBench::label(const AccessibilityAttributes &attributes)
{
    for (const auto &text : {attributes.title, attributes.description, attributes.value, attributes.help}) {
        if (text && !text->isEmpty())
            return *text;
    }
    return {};
}

QList<WalkedNode> AtspiBench::nodes(const Walk &walk)
{
    QList<WalkedNode> nodes;
    for (const AccessibilityAttributes &attributes : walk.attributes)
        nodes.append({attributes.role, label(attributes), attributes.children.size()});
    return nodes;
}

QStringList AtspiBench::labels(const QProcess &program, const QString &role)
{
    QStringList labels;
    const Tree found = tree(program);
    if (!found)
        return labels;
    for (const AccessibilityAttributes &attributes : Awaited::result(walk(found)).attributes) {
        if (attributes.role == role)
            labels.append(label(attributes));
    }
    return labels;
}

bool AtspiBench::waitForLabel(const QProcess &program, const QString &role, const QString &label)
{
    return QTest::qWaitFor([&] { return labels(program, role).contains(label); }, patience);
}

bool AtspiBench::press(const QProcess &program, const QString &role, const QString &wanted)
{
    const Tree found = tree(program);
    if (!found)
        return false;
    const Walk whole = Awaited::result(walk(found));
    for (qsizetype i = 0; i < whole.elements.size(); ++i) {
        const AccessibilityAttributes &attributes = whole.attributes.at(i);
        if (attributes.role == role && label(attributes) == wanted)
            return Awaited::result(found->press(whole.elements.at(i)));
    }
    return false;
}

QCoro::Task<QString> AtspiBenchDetails::caught(QCoro::Task<void> task)
{
    try {
        co_await task;
    } catch (const PlatformError &error) {
        co_return error.errorDescription();
    }
    co_return QString();
}

QCoro::Task<std::optional<DesktopWindow>> AtspiBench::RealKeyboard::frontmostWindow()
{
    const WindowSnapshot snapshot = co_await display.snapshot();
    const DesktopWindow *window = snapshot.frontmost(QCoreApplication::applicationPid());
    if (!window)
        co_return std::nullopt;
    co_return *window;
}
