// SPDX-License-Identifier: Apache-2.0
// The cost of the observation sent to the model at each step, with 1, 10 and 30 windows of a real editor.
// Needs a private desktop session.
#include "Actions/Executor.h"
#include "Desktop/Linux/LinuxBench.h"
#include "Desktop/Linux/LinuxDesktop.h"
#include "Support/Awaited.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// An editor with `count` documents, each in its own window.
class OpenDocuments
{
public:
    explicit OpenDocuments(qsizetype count)
    {
        QStringList arguments{u"--disable-server"_s, u"--opening-mode=window"_s};
        for (qsizetype i = 0; i < count; ++i) {
            arguments.append(m_folder.filePath(u"document %1.txt"_s.arg(i)));
            QFile file(arguments.constLast());
            if (!file.open(QIODevice::WriteOnly))
                qFatal("A document cannot be written.");
        }
        m_program = LinuxBench::start(u"mousepad"_s, arguments);
        const auto areOpen = [this, count] { return m_bench.snapshot().windows.size() == count; };
        if (!QTest::qWaitFor(areOpen, LinuxBench::patience))
            qFatal("The editor does not open its windows.");
    }

    ~OpenDocuments()
    {
        m_program.reset();
        const auto areGone = [this] { return m_bench.snapshot().windows.isEmpty(); };
        if (!QTest::qWaitFor(areGone, LinuxBench::patience))
            qFatal("The editor does not end.");
    }

    OpenDocuments(const OpenDocuments &) = delete;
    OpenDocuments &operator=(const OpenDocuments &) = delete;

private:
    LinuxBench m_bench;
    QTemporaryDir m_folder;
    LinuxBench::Program m_program{nullptr, nullptr};
};

void observe(benchmark::State &state)
{
    const OpenDocuments documents(state.range(0));
    LinuxDesktop desktop;
    QString seen;
    for ([[maybe_unused]] auto round : state)
        seen = Awaited::result(Executor::observe(desktop.desktop()));
    state.counters["characters"] = static_cast<double>(seen.size());
}

BENCHMARK(observe)->Arg(1)->Arg(10)->Arg(30)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
