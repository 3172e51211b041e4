// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxBench.h"
#include "Support/Awaited.h"

#include <QTest>

namespace {

void end(QProcess *process)
{
    process->kill();
    process->waitForFinished();
    delete process;
}

const DesktopWindow *findTitle(const WindowSnapshot &snapshot, const QString &part)
{
    for (const DesktopWindow &window : snapshot.windows) {
        if (window.title.contains(part))
            return &window;
    }
    return nullptr;
}

QCoro::Task<QString> caught(QCoro::Task<void> task)
{
    try {
        co_await task;
    } catch (const PlatformError &error) {
        co_return error.errorDescription();
    }
    co_return QString();
}

} // namespace

LinuxBench::Program LinuxBench::start(const QString &program, const QStringList &arguments)
{
    Program process(new QProcess, &end);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start(program, arguments);
    return process;
}

WindowSnapshot LinuxBench::snapshot()
{
    return Awaited::result(display.snapshot());
}

bool LinuxBench::waitForActive(const QString &partOfTitle)
{
    const auto isActive = [this, &partOfTitle] {
        const WindowSnapshot now = snapshot();
        const DesktopWindow *active = now.active();
        return active && active->title.contains(partOfTitle);
    };
    return QTest::qWaitFor(isActive, patience);
}

std::optional<DesktopWindow> LinuxBench::waitForWindow(const QString &partOfTitle)
{
    std::optional<DesktopWindow> found;
    const auto look = [this, &partOfTitle, &found] {
        const WindowSnapshot now = snapshot();
        if (const DesktopWindow *window = findTitle(now, partOfTitle))
            found = *window;
        return found.has_value();
    };
    return QTest::qWaitFor(look, patience) ? found : std::nullopt;
}

bool LinuxBench::waitForNoWindow(const QString &partOfTitle)
{
    const auto isGone = [this, &partOfTitle] { return !findTitle(snapshot(), partOfTitle); };
    return QTest::qWaitFor(isGone, patience);
}

void LinuxBench::bringForward(const DesktopWindow &window)
{
    Awaited::result(display.bringForward(window));
}

QString LinuxBench::post(const QList<KeyStroke> &strokes, std::chrono::microseconds pause)
{
    const auto front = Awaited::result(workspace.frontmostApplication());
    return errorOf(keyboard.post(strokes, pause, front));
}

QString LinuxBench::errorOf(QCoro::Task<void> task)
{
    return Awaited::result(caught(std::move(task)));
}

QByteArray LinuxBench::output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(patience))
        qWarning("%s did not end: %s", qPrintable(program), qPrintable(process.errorString()));
    return process.readAllStandardOutput();
}
