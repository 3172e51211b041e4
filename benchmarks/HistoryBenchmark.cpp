// SPDX-License-Identifier: Apache-2.0
// Frame times of the window in software rendering: scrolling a long history, and streaming a reply below it.
// The window, its models and the session are real; the language model and the desktop are scripted.
#include "Agent/SessionBench.h"
#include "ContentView/ViewModels/ContentViewModel.h"
#include "ContentView/Window/MainWindow.h"
#include "Support/Gate.h"

#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQuickItem>
#include <QTest>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

Q_IMPORT_QML_PLUGIN(Orvane_ContentViewPlugin)

namespace {

constexpr int turns = 1000;
constexpr int stepsOfTheLast = 12;
constexpr int frames = 600;
constexpr double pixelsPerFrame = 60; // fast scrolling
constexpr int replyTokens = 200;      // the longest reply; a token per frame is more than a CPU generates

// The window after a thousand tasks, the last with twelve steps.
class LongHistory
{
public:
    LongHistory()
    {
        m_content.appear();
        m_bench.desktop.workspace.install(u"Safari"_s);
        for (int turn = 1; turn < turns; ++turn)
            run(u"Open Safari, for the %1th time"_s.arg(turn), 1);
        run(u"Open this and that"_s, stepsOfTheLast - 1);
        if (!m_window)
            qFatal("The window's views cannot be loaded.");
        m_window->show();
        QTest::qWait(1500);
        m_list = listBelow(m_window->contentItem());
        if (!m_list)
            qFatal("There is no history to be seen.");
    }

    QQuickItem &list() { return *m_list; }

    // Main thread time in seconds for one frame, including pending changes.
    double frame()
    {
        bool isDrawn = false;
        const auto connection = QObject::connect(m_window.get(), &QQuickWindow::frameSwapped, m_window.get(),
                                                 [&isDrawn] { isDrawn = true; });
        QElapsedTimer timer;
        timer.start();
        m_window->update();
        while (!isDrawn)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QObject::disconnect(connection);
        return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
    }

    // Starts a reply that continues until `endReply`.
    void beginReply()
    {
        m_bench.engine->beforeReply = [this] { return m_gate.passed(); };
        m_bench.engine->replies.append(done(u"Done."_s));
        m_bench.session->submit(u"Tell me a long story"_s);
        m_bench.engine->callbacks.clear();
        if (!QTest::qWaitFor([this] { return !m_bench.engine->callbacks.isEmpty(); }))
            qFatal("The task does not begin.");
    }
    void giveOnePiece() { m_bench.engine->callbacks.constLast()(u"word "_s); }
    void endReply()
    {
        m_gate.open();
        m_bench.waitForEnd();
        m_bench.engine->beforeReply = nullptr;
    }

private:
    void run(const QString &task, int steps)
    {
        for (int step = 0; step < steps; ++step)
            m_bench.engine->replies.append(openApp(step % 2 == 0 ? u"Safari"_s : u"Mail"_s));
        m_bench.engine->replies.append(done(u"That is done."_s));
        m_bench.runTask(task);
    }

    static QQuickItem *listBelow(QQuickItem *item)
    {
        if (item->inherits("QQuickListView") && item->height() > 100)
            return item;
        for (QQuickItem *child : item->childItems()) {
            if (QQuickItem *found = listBelow(child))
                return found;
        }
        return nullptr;
    }

    SessionBench m_bench;
    ContentViewModel m_content{m_bench.models, *m_bench.session, m_bench.desktop.services()};
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window = MainWindow::make(m_engine, m_content, {});
    QQuickItem *m_list = nullptr;
    Gate m_gate;
};

std::unique_ptr<LongHistory> theHistory; // destroyed before the application

LongHistory &history()
{
    if (!theHistory)
        theHistory = std::make_unique<LongHistory>();
    return *theHistory;
}

void addSummary(benchmark::State &state, std::vector<double> seconds)
{
    std::ranges::sort(seconds);
    const auto late = std::ranges::count_if(seconds, [](double each) { return each > 1.0 / 60; });
    state.counters["median_ms"] = seconds[seconds.size() / 2] * 1000;
    state.counters["99th_ms"] = seconds[seconds.size() * 99 / 100] * 1000;
    state.counters["longest_ms"] = seconds.back() * 1000;
    state.counters["late_frames"] = static_cast<double>(late);
}

// Scrolls upwards from the end.
void scrolling(benchmark::State &state)
{
    QQuickItem &list = history().list();
    QMetaObject::invokeMethod(&list, "positionViewAtEnd");
    std::vector<double> seconds;
    for ([[maybe_unused]] auto round : state) {
        list.setProperty("contentY", list.property("contentY").toDouble() - pixelsPerFrame);
        seconds.push_back(history().frame());
    }
    addSummary(state, seconds);
}

void streaming(benchmark::State &state)
{
    QMetaObject::invokeMethod(&history().list(), "positionViewAtEnd");
    history().beginReply();
    std::vector<double> seconds;
    for ([[maybe_unused]] auto round : state) {
        history().giveOnePiece();
        seconds.push_back(history().frame());
    }
    history().endReply();
    addSummary(state, seconds);
}

BENCHMARK(scrolling)->Iterations(frames)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(streaming)->Iterations(replyTokens)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    theHistory.reset();
    benchmark::Shutdown();
}
