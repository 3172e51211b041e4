// SPDX-License-Identifier: Apache-2.0
// Reading an application's tree: the system's way, alternating on the same tree with two sequential ways, one
// with the same calls, whose results must agree, and libatspi. Needs a private desktop session.
//
// Also reports the latency of the application's own bulk reply, and the CPU time of this process and the
// application per reading.
#include "Desktop/Linux/Atspi/Bulk.h"
#include "trees/ShownTree.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *heading = "toolkit    read   told |   system  one by one  times   libatspi  times | "
                                "own CPU  its CPU |   answer  its CPU\n";
constexpr const char *row =
    "%-9s %5lld %6lld | %8.1f  %10.1f %6.1f   %8.1f %6.1f | %7.1f  %7.1f | %8.1f  %7.1f\n";

// Medians for one way of reading, in milliseconds.
struct Cost
{
    double time = 0;
    double own = 0;         // CPU time of this process
    double application = 0; // CPU time of the application
};

// The CPU time in milliseconds of all living threads of a process.
double processorTime(qint64 process)
{
    double milliseconds = 0;
    const QDir threads(u"/proc/%1/task"_s.arg(process));
    for (const QString &thread : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(threads.filePath(thread + u"/schedstat"_s));
        if (file.open(QIODevice::ReadOnly))
            milliseconds += file.readAll().split(' ').constFirst().toDouble() * 1e-6;
    }
    return milliseconds;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

// Collects the costs of one way of reading, round by round.
class Costs
{
public:
    explicit Costs(qint64 application) : m_application(application) {}

    template <typename Read>
    auto add(Read read)
    {
        const double own = processorTime(QCoreApplication::applicationPid());
        const double application = processorTime(m_application);
        QElapsedTimer timer;
        timer.start();
        auto result = read();
        m_time.append(static_cast<double>(timer.nsecsElapsed()) * 1e-6);
        m_own.append(processorTime(QCoreApplication::applicationPid()) - own);
        m_others.append(processorTime(m_application) - application);
        return result;
    }

    Cost cost() const { return {median(m_time), median(m_own), median(m_others)}; }

private:
    qint64 m_application;
    QList<double> m_time;
    QList<double> m_own;
    QList<double> m_others;
};

void compare(const QString &toolkit, qsizetype elements, PageMoment moment, int rounds)
{
    ShownTree shown(toolkit, elements, moment);
    Costs bulk(shown.process());
    Costs plain(shown.process());
    Costs answer(shown.process());
    QList<double> libatspi;
    qsizetype told = 0;
    for (int round = 0; round < rounds; ++round) {
        const auto inBulk = bulk.add([&] { return shown.readInBulk(elements); });
        const auto singly = plain.add([&] { return shown.readNodeByNode(elements); });
        if (inBulk != singly)
            std::fprintf(stderr, "%s: the two ways to read the tree do not agree.\n", qPrintable(toolkit));
        if (const std::optional<double> time = shown.readWithLibatspi(elements))
            libatspi.append(*time);
        told = AtspiCache::fromReply(answer.add([&] { return shown.askForAll(); })).items().size();
    }
    const Cost ours = bulk.cost();
    const Cost theirs = plain.cost();
    const Cost alone = answer.cost();
    const double library = libatspi.isEmpty() ? 0 : median(libatspi);
    std::printf(row, qPrintable(toolkit), static_cast<long long>(elements), static_cast<long long>(told),
                ours.time, theirs.time, theirs.time / ours.time, library, library / ours.time, ours.own,
                ours.application, alone.time, alone.application);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        u"Compares reading an application's tree with reading it node by node."_s);
    parser.addHelpOption();
    const QCommandLineOption toolkit(
        u"toolkit"_s, u"one of %1; may be repeated (default: all)"_s.arg(ShownTree::toolkits().join(u", ")),
        u"NAME"_s);
    const QCommandLineOption size(
        u"size"_s, u"read so many elements; may be repeated (default: 100, 1500, 8000)"_s, u"COUNT"_s);
    const QCommandLineOption rounds(u"rounds"_s, u"how often each (default: 5)"_s, u"COUNT"_s, u"5"_s);
    const QCommandLineOption late(u"late"_s, u"open a browser's page after the browser was read in bulk"_s);
    parser.addOptions({toolkit, size, rounds, late});
    parser.process(application);

    const QStringList toolkits = parser.isSet(toolkit) ? parser.values(toolkit) : ShownTree::toolkits();
    const QStringList sizes =
        parser.isSet(size) ? parser.values(size) : QStringList{u"100"_s, u"1500"_s, u"8000"_s};
    const PageMoment moment = parser.isSet(late) ? PageMoment::AfterBulk : PageMoment::BeforeBulk;
    std::printf("Times in ms, medians. `told`: elements in the application's own answer in bulk.\n");
    std::printf("%s", heading);
    for (const QString &name : toolkits) {
        if (const QString package = ShownTree::missing(name); !package.isEmpty()) {
            std::fprintf(stderr, "%s is left out: it needs %s.\n", qPrintable(name), qPrintable(package));
            continue;
        }
        for (const QString &count : sizes) {
            if (ShownTree::canShow(name, count.toLongLong()))
                compare(name, count.toLongLong(), moment, parser.value(rounds).toInt());
        }
    }
}
