// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Atspi/Disclosure.h"

#include "Desktop/BoundedQueue.h"
#include "Desktop/Linux/Atspi/Finder.h"
#include "Desktop/Linux/Atspi/Reader.h"
#include "Desktop/PlatformError.h"

#include <QCoroFuture>

#include <algorithm>
#include <vector>

namespace {

QList<AtspiReading> readingsOf(const QList<AtspiReference> &objects)
{
    QList<AtspiReading> readings;
    for (const AtspiReference &object : objects) {
        AtspiReading reading;
        reading.object = object;
        readings.append(reading);
    }
    return readings;
}

// Of many applications that are asked at the same time. Whoever has not answered is silent.
struct Survey
{
    explicit Survey(qsizetype count) : answers(count, AtspiDisclosure::Silent), open(count) { ended.start(); }

    QList<AtspiDisclosure> answers;
    qsizetype open;
    QPromise<void> ended;
};

QCoro::Task<AtspiDisclosure> disclosure(QDBusConnection bus, qint64 process)
{
    const std::optional<AtspiReference> root = co_await Atspi::findApplication(bus, process);
    if (!root)
        co_return AtspiDisclosure::Hidden;
    const QString name = Atspi::processName(process);
    const auto application = co_await AtspiApplication::introduced(bus, *root, name);
    const auto nothingKnown = std::make_shared<const AtspiCache>();
    const bool isHidden = co_await Atspi::hidesControls(application, nothingKnown);
    co_return isHidden ? AtspiDisclosure::Hidden : AtspiDisclosure::Shown;
}

QCoro::Task<void> ask(QDBusConnection bus, qint64 process, std::shared_ptr<Survey> survey, qsizetype place)
{
    try {
        const AtspiDisclosure answer = co_await disclosure(bus, process);
        survey->answers[place] = answer;
    } catch (const PlatformError &) {
        survey->answers[place] = AtspiDisclosure::Silent;
    }
    if (--survey->open == 0)
        survey->ended.finish();
}

} // namespace

QCoro::Task<bool> Atspi::hidesControls(std::shared_ptr<AtspiApplication> application,
                                       std::shared_ptr<const AtspiCache> cache)
{
    if (application->toolkit() != AtspiToolkit::Chromium)
        co_return false;
    const auto nothingOutlined = std::make_shared<AtspiOutline>(0);
    AtspiReader windowsReader(application, cache, nothingOutlined, readingsOf({application->root()}));
    co_await windowsReader.read();
    const QList<AtspiReference> windows = windowsReader.readings().constFirst().children;
    AtspiReader contentsReader(application, cache, nothingOutlined, readingsOf(windows));
    co_await contentsReader.read();
    const QList<AtspiReading> contents = contentsReader.readings();
    co_return std::all_of(contents.cbegin(), contents.cend(),
                          [](const AtspiReading &window) { return window.children.isEmpty(); });
}

QCoro::Task<QList<AtspiDisclosure>> Atspi::disclosures(QDBusConnection bus, QList<qint64> processes,
                                                       std::chrono::milliseconds limit)
{
    const auto survey = std::make_shared<Survey>(processes.size());
    if (processes.isEmpty())
        co_return survey->answers;
    std::vector<QCoro::Task<void>> questions;
    for (qsizetype place = 0; place < processes.size(); ++place)
        questions.push_back(ask(bus, processes.at(place), survey, place));
    const QFuture<bool> ended = finishedWithin(survey->ended.future(), limit);
    co_await ended;
    co_return survey->answers;
}
