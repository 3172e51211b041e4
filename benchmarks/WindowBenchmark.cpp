// SPDX-License-Identifier: Apache-2.0
// The built program's window, measured from outside: time until it is completely visible, memory, and
// activity while idle. Needs a private desktop session on an otherwise idle machine.
#include "Desktop/Linux/Session/LinuxProgramInstance.h"
#include "Desktop/Linux/X11/Connection.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRect>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <memory>
#include <numeric>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

namespace {

// Time for a start or summons to settle: Qt Quick's last start-up timers fire after 2.3 seconds.
constexpr auto settlingTime = 3s;
constexpr auto patience = 30s;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void rest(std::chrono::milliseconds time)
{
    QThread::msleep(static_cast<unsigned long>(time.count()));
}

// The middle of the screen, which shows the setup card; nothing there blinks.
class Middle
{
public:
    Middle()
    {
        const xcb_screen_t *screen = m_connection.screen();
        m_area.moveCenter({screen->width_in_pixels / 2, screen->height_in_pixels / 2});
    }

    QByteArray picture()
    {
        const auto cookie = xcb_get_image(
            m_connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection.root(),
            static_cast<std::int16_t>(m_area.x()), static_cast<std::int16_t>(m_area.y()),
            static_cast<std::uint16_t>(m_area.width()), static_cast<std::uint16_t>(m_area.height()), ~0U);
        const X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_connection.get(), cookie, nullptr));
        if (!reply)
            qFatal("The screen can't be read.");
        return {reinterpret_cast<const char *>(xcb_get_image_data(reply.get())),
                xcb_get_image_data_length(reply.get())};
    }

    // Saves the current picture as that of the settled window.
    void remember() { m_window = picture(); }
    bool showsWindow() { return picture() == m_window; }

    void waitForWindow(bool isShown)
    {
        const auto start = Clock::now();
        while (showsWindow() != isShown) {
            if (Clock::now() - start > patience)
                qFatal(isShown ? "The window doesn't come up." : "The window doesn't go.");
        }
    }

private:
    X11Connection m_connection;
    QRect m_area{0, 0, 400, 200};
    QByteArray m_window;
};

// The program without a model, with its own folder.
class Program
{
public:
    Program()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"ORVANE_HOME"_s, m_folder.path());
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(ORVANE_PROGRAM), QStringList());
    }

    ~Program()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    void summon() const { send(u"Activate"_s, {QVariantMap()}); }
    void toggle() const
    {
        send(u"ActivateAction"_s, {QString(ApplicationService::toggleAction), QVariantList(), QVariantMap()});
    }

    // A file in the process's /proc folder.
    QByteArray told(const QString &name) const
    {
        QFile file(u"/proc/%1/%2"_s.arg(m_process.processId()).arg(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // The number in a line "name: number" of such a file.
    double number(const QString &file, const QByteArray &name) const
    {
        const QByteArray text = told(file);
        const qsizetype at = text.indexOf(name + ':');
        return at < 0 ? 0 : text.mid(at + name.size() + 1).simplified().split(' ').first().toDouble();
    }

    // Sums over all threads: wake-ups and CPU time.
    double wakeUps() const
    {
        return overThreads([this](const QString &thread) {
            return number(u"task/%1/status"_s.arg(thread), "voluntary_ctxt_switches");
        });
    }

    double processorMilliseconds() const
    {
        return overThreads([this](const QString &thread) {
            return told(u"task/%1/schedstat"_s.arg(thread)).split(' ').first().toDouble() / 1e6;
        });
    }

private:
    static void send(const QString &method, const QVariantList &arguments)
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(LinuxProgramInstance::busName, LinuxProgramInstance::objectPath,
                                           u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        QDBusConnection::sessionBus().send(message);
    }

    template <typename Measure>
    double overThreads(Measure measure) const
    {
        const QDir tasks(u"/proc/%1/task"_s.arg(m_process.processId()));
        const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return std::accumulate(threads.cbegin(), threads.cend(), 0.0,
                               [&](double sum, const QString &thread) { return sum + measure(thread); });
    }

    QTemporaryDir m_folder;
    QProcess m_process;
};

// The middle of the screen, with the window's picture saved from an earlier run.
Middle &middle()
{
    static const std::unique_ptr<Middle> shared = [] {
        auto made = std::make_unique<Middle>();
        const QByteArray empty = made->picture();
        const Program program;
        const auto start = Clock::now();
        while (made->picture() == empty) {
            if (Clock::now() - start > patience)
                qFatal("The window doesn't come up.");
        }
        rest(settlingTime);
        made->remember();
        return made;
    }();
    return *shared;
}

void addSummary(benchmark::State &state, std::vector<double> milliseconds)
{
    std::ranges::sort(milliseconds);
    state.counters["median_ms"] = milliseconds[milliseconds.size() / 2];
    state.counters["longest_ms"] = milliseconds.back();
}

// From process start to the complete window.
void startToFirstFrame(benchmark::State &state)
{
    std::vector<double> milliseconds;
    for (auto _ : state) {
        middle().waitForWindow(false);
        const auto start = Clock::now();
        const Program program;
        middle().waitForWindow(true);
        milliseconds.push_back(millisecondsSince(start));
        state.SetIterationTime(milliseconds.back() / 1000);
        rest(settlingTime); // keep the old process's end out of the next start
    }
    addSummary(state, milliseconds);
}

// From the request to show the hidden window to the complete window in front.
void summonToFirstFrame(benchmark::State &state)
{
    std::vector<double> milliseconds;
    middle().waitForWindow(false);
    const Program program;
    middle().waitForWindow(true);
    rest(settlingTime);
    for (auto _ : state) {
        program.toggle();
        middle().waitForWindow(false);
        rest(settlingTime);
        const auto start = Clock::now();
        program.summon();
        middle().waitForWindow(true);
        milliseconds.push_back(millisecondsSince(start));
        state.SetIterationTime(milliseconds.back() / 1000);
        rest(settlingTime);
    }
    addSummary(state, milliseconds);
}

enum Visibility { Hidden, Shown };

// Memory, and activity during ten idle seconds.
void idle(benchmark::State &state)
{
    constexpr auto time = 10s;
    middle().waitForWindow(false);
    const Program program;
    middle().waitForWindow(true);
    rest(settlingTime);
    if (state.range(0) == Hidden) {
        program.toggle();
        middle().waitForWindow(false);
        rest(settlingTime);
    }
    for (auto _ : state) {
        const double wakeUps = program.wakeUps();
        const double processor = program.processorMilliseconds();
        rest(time);
        state.counters["wake_ups"] = program.wakeUps() - wakeUps;
        state.counters["processor_ms"] = program.processorMilliseconds() - processor;
        state.SetIterationTime(std::chrono::duration<double>(time).count());
    }
    const double megabyte = 1e6 / 1024; // in kB as reported by the kernel
    state.counters["resident_MB"] = program.number(u"status"_s, "VmRSS") / megabyte;
    state.counters["own_MB"] = program.number(u"status"_s, "RssAnon") / megabyte;
}

BENCHMARK(startToFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(summonToFirstFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(idle)->ArgName("shown")->Arg(Shown)->Arg(Hidden)->UseManualTime()->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
