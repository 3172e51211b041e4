// SPDX-License-Identifier: Apache-2.0
// Reading the tree of a large page in Firefox: in bulk, as the system does it, against one call after the
// other. Run it in a private desktop session. Both read the same page in the same run, and must agree.
#include "Desktop/Linux/Accessibility/AtspiBench.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

// Firefox with a page of so many links; started once for each size.
class LinkPage
{
public:
    explicit LinkPage(qsizetype nodes);

    qint64 process() const { return m_program->processId(); }
    QList<WalkedNode> readInBulk(qsizetype most);

private:
    AtspiBench m_bench;
    QTemporaryDir m_folder;
    AtspiBench::Program m_program{nullptr, nullptr};
};

LinkPage::LinkPage(qsizetype nodes)
{
    QFile page(m_folder.filePath(u"page.html"_s));
    if (!page.open(QIODevice::WriteOnly))
        qFatal("The page cannot be written.");
    page.write("<title>Links</title>");
    for (qsizetype i = 0; i < nodes; ++i)
        page.write("<a href='#" + QByteArray::number(i) + "'>Link " + QByteArray::number(i) + "</a> ");
    page.close();
    m_program = AtspiBench::start(u"firefox-esr"_s,
                                  {u"--new-instance"_s, QUrl::fromLocalFile(page.fileName()).toString()});
    // Firefox keeps for bulk answers what there was when it was first asked for them: so that comes last,
    // when the browser has built the page and its own window.
    NodeByNode plain;
    const auto isRead = [&] {
        const QList<WalkedNode> read = plain.walk(process(), nodes);
        return read.size() == nodes && read == readInBulk(nodes);
    };
    if (!QTest::qWaitFor(isRead, 3 * AtspiBench::patience))
        qFatal("Firefox does not show the page, or the two ways to read it never agree.");
}

QList<WalkedNode> LinkPage::readInBulk(qsizetype most)
{
    const AtspiBench::Tree tree = m_bench.tree(*m_program);
    return tree ? AtspiBench::nodes(QCoro::waitFor(AtspiBench::walk(tree, most))) : QList<WalkedNode>();
}

// One browser at a time: two would share the two or four processors of a small machine.
LinkPage &page(qsizetype nodes)
{
    static std::unique_ptr<LinkPage> current;
    static qsizetype currentNodes = 0;
    if (currentNodes != nodes) {
        current.reset();
        current = std::make_unique<LinkPage>(nodes);
        currentNodes = nodes;
    }
    return *current;
}

double millisecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The time is that of the bulk reading; the counters tell the other one and the ratio.
void readTree(benchmark::State &state)
{
    const qsizetype nodes = state.range(0);
    LinkPage &links = page(nodes);
    NodeByNode plain;
    double bulk = 0;
    double single = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const QList<WalkedNode> read = links.readInBulk(nodes);
        const double milliseconds = millisecondsSince(start);
        state.SetIterationTime(milliseconds / 1000);
        bulk += milliseconds;
        const auto plainStart = std::chrono::steady_clock::now();
        const QList<WalkedNode> readSingly = plain.walk(links.process(), nodes);
        single += millisecondsSince(plainStart);
        if (read != readSingly) {
            state.SkipWithError("The two ways to read the tree do not agree.");
            break;
        }
    }
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["bulk_ms"] = bulk / rounds;
    state.counters["node_by_node_ms"] = single / rounds;
    state.counters["times_faster"] = single / bulk;
}

BENCHMARK(readTree)->Arg(1500)->Arg(8000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
