// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Recording/RecordingServices.h"

#include "Base/Text.h"
#include "Desktop/PlatformError.h"

#include <QFile>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString described(EventFlags flags)
{
    QString text;
    if (flags.testFlag(EventFlag::Command))
        text += u"command+"_s;
    if (flags.testFlag(EventFlag::Shift))
        text += u"shift+"_s;
    if (flags.testFlag(EventFlag::Alternate))
        text += u"option+"_s;
    if (flags.testFlag(EventFlag::Control))
        text += u"control+"_s;
    return text;
}

QString described(const KeyStroke &stroke)
{
    if (!stroke.text.isEmpty())
        return u"type “%1”"_s.arg(stroke.text);
    return u"press key %1%2"_s.arg(described(stroke.flags)).arg(stroke.virtualKey);
}

// One transparent pixel.
QByteArray smallPicture()
{
    return QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAA"
        "AABJRU5ErkJggg==");
}

} // namespace

QCoro::Task<bool> RecordingSession::isLocked()
{
    co_await m_journal.turn();
    co_return locked;
}

QCoro::Task<void> RecordingKeyboard::post(QList<KeyStroke> newStrokes, std::chrono::microseconds pause,
                                          std::optional<RunningApplication> receiver)
{
    co_await m_journal.begin(RecordedOperation::PostKeys);
    const auto processOf = [](const std::optional<RunningApplication> &application) {
        return application ? application->processIdentifier : 0;
    };
    if (processOf(receiver) != processOf(m_workspace.frontmost()))
        throw PlatformError(u"Another application is in front, so no keys were sent."_s);
    for (const KeyStroke &stroke : std::as_const(newStrokes)) {
        m_journal.note(described(stroke));
        strokes.append(stroke);
        pauses.append(pause);
    }
}

QCoro::Task<void> RecordingScreenCapture::capture(QString path)
{
    co_await m_journal.begin(RecordedOperation::Capture);
    m_journal.note(u"capture the screen to %1"_s.arg(path));
    QFile file(path);
    if (writesFile && file.open(QIODevice::WriteOnly))
        file.write(smallPicture());
}

QCoro::Task<ScriptOutcome> RecordingScripting::run(QString source, ScriptHost &)
{
    co_await m_journal.begin(RecordedOperation::RunScript);
    m_journal.note(u"run script %1"_s.arg(source));
    whileRunning();
    ScriptOutcome cleaned = outcome;
    cleaned.text = Text::cleaned(outcome.text);
    co_return cleaned;
}

QCoro::Task<void> RecordingClock::sleep(std::chrono::milliseconds duration)
{
    co_await m_journal.turn();
    m_journal.note(u"wait %1 ms"_s.arg(duration.count()));
    sleeps.append(duration);
    time = time.addMSecs(duration.count());
}
