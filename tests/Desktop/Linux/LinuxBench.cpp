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

const X11Window *findTitle(const X11Snapshot &snapshot, const QString &part)
{
    for (const X11Window &window : snapshot.windows) {
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

X11Snapshot LinuxBench::snapshot()
{
    return Awaited::result(display.snapshot());
}

bool LinuxBench::waitForActive(const QString &partOfTitle)
{
    const auto isActive = [this, &partOfTitle] {
        const X11Snapshot now = snapshot();
        const X11Window *active = now.active();
        return active && active->title.contains(partOfTitle);
    };
    return QTest::qWaitFor(isActive, patience);
}

std::optional<X11Window> LinuxBench::waitForWindow(const QString &partOfTitle)
{
    std::optional<X11Window> found;
    const auto look = [this, &partOfTitle, &found] {
        const X11Snapshot now = snapshot();
        if (const X11Window *window = findTitle(now, partOfTitle))
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

void LinuxBench::bringForward(const X11Window &window)
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
