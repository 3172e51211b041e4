// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Scripting/SoundServer.h"

#include "Desktop/Deadlines.h"
#include "Desktop/PlatformError.h"

#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr pa_sample_spec tone{PA_SAMPLE_S16NE, 44100, 1};
constexpr double toneSeconds = 0.15;
constexpr double toneFrequency = 880.0;
constexpr double toneVolume = 0.3;

// Fades at both ends, so that it doesn't click.
std::vector<std::int16_t> toneSamples()
{
    std::vector<std::int16_t> samples(static_cast<std::size_t>(toneSeconds * tone.rate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = static_cast<double>(i) / tone.rate;
        const double envelope = std::sin(std::numbers::pi * time / toneSeconds);
        const double value = std::sin(2.0 * std::numbers::pi * toneFrequency * time) * envelope * toneVolume;
        samples[i] = static_cast<std::int16_t>(value * INT16_MAX);
    }
    return samples;
}

PlatformError noAnswer()
{
    return PlatformError(u"The desktop's sound server doesn't answer."_s);
}

pa_volume_t volumeOf(int percent)
{
    return static_cast<pa_volume_t>(std::lround(percent * (PA_VOLUME_NORM / 100.0)));
}

struct Success
{
    std::optional<bool> value;

    static void take(pa_context *, int success, void *self)
    {
        static_cast<Success *>(self)->value = success != 0;
    }
};

void takeStreamSuccess(pa_stream *, int success, void *self)
{
    static_cast<Success *>(self)->value = success != 0;
}

} // namespace

struct SoundServer::Device
{
    std::string name;
    pa_cvolume volume;
    bool isMuted = false;

    Level level() const
    {
        return {static_cast<int>(std::lround(pa_cvolume_avg(&volume) * 100.0 / PA_VOLUME_NORM)), isMuted};
    }

    template <typename Information>
    static void take(pa_context *, const Information *information, int, void *found)
    {
        if (information)
            *static_cast<std::optional<Device> *>(found) =
                Device{information->name, information->volume, information->mute != 0};
    }
};

SoundServer::SoundServer()
    : m_loop(pa_mainloop_new(), &pa_mainloop_free), m_context(nullptr, &pa_context_unref)
{
    m_context.reset(pa_context_new(pa_mainloop_get_api(m_loop.get()), "Orvane"));
    m_deadline = std::chrono::steady_clock::now() + Deadlines::answer;
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        throw PlatformError(u"This desktop has no sound server."_s);
    waitUntil([this] {
        const pa_context_state_t state = pa_context_get_state(m_context.get());
        if (!PA_CONTEXT_IS_GOOD(state))
            throw PlatformError(u"This desktop has no sound server."_s);
        return state == PA_CONTEXT_READY;
    });
}

std::optional<SoundServer::Level> SoundServer::output()
{
    const std::optional<Device> found = device(false);
    return found ? std::optional(found->level()) : std::nullopt;
}

std::optional<SoundServer::Level> SoundServer::input()
{
    const std::optional<Device> found = device(true);
    return found ? std::optional(found->level()) : std::nullopt;
}

void SoundServer::setOutput(int percent)
{
    Device sink = required(false);
    pa_cvolume_scale(&sink.volume, volumeOf(percent));
    Success success;
    carryOut(pa_context_set_sink_volume_by_name(m_context.get(), sink.name.c_str(), &sink.volume,
                                                &Success::take, &success));
    if (!success.value.value_or(false))
        throw PlatformError(u"The volume can't be set."_s);
}

void SoundServer::setInput(int percent)
{
    Device source = required(true);
    pa_cvolume_scale(&source.volume, volumeOf(percent));
    Success success;
    carryOut(pa_context_set_source_volume_by_name(m_context.get(), source.name.c_str(), &source.volume,
                                                  &Success::take, &success));
    if (!success.value.value_or(false))
        throw PlatformError(u"The volume can't be set."_s);
}

void SoundServer::muteOutput(bool muted)
{
    const Device sink = required(false);
    Success success;
    carryOut(pa_context_set_sink_mute_by_name(m_context.get(), sink.name.c_str(), muted ? 1 : 0,
                                              &Success::take, &success));
    if (!success.value.value_or(false))
        throw PlatformError(u"The sound can't be muted."_s);
}

void SoundServer::beep()
{
    const std::unique_ptr<pa_stream, void (*)(pa_stream *)> stream(
        pa_stream_new(m_context.get(), "Beep", &tone, nullptr), &pa_stream_unref);
    pa_stream_connect_playback(stream.get(), nullptr, nullptr, PA_STREAM_NOFLAGS, nullptr, nullptr);
    waitUntil([&stream] {
        const pa_stream_state_t state = pa_stream_get_state(stream.get());
        if (!PA_STREAM_IS_GOOD(state))
            throw PlatformError(u"There is no device for sound."_s);
        return state == PA_STREAM_READY;
    });
    const std::vector<std::int16_t> samples = toneSamples();
    pa_stream_write(stream.get(), samples.data(), samples.size() * sizeof(samples[0]), nullptr, 0,
                    PA_SEEK_RELATIVE);
    Success played;
    carryOut(pa_stream_drain(stream.get(), &takeStreamSuccess, &played));
    if (!played.value.value_or(false))
        throw PlatformError(u"The sound could not be played."_s);
    pa_stream_disconnect(stream.get());
}

std::optional<SoundServer::Device> SoundServer::device(bool isInput)
{
    std::optional<Device> found;
    if (isInput)
        carryOut(pa_context_get_source_info_by_name(m_context.get(), "@DEFAULT_SOURCE@",
                                                    &Device::take<pa_source_info>, &found));
    else
        carryOut(pa_context_get_sink_info_by_name(m_context.get(), "@DEFAULT_SINK@",
                                                  &Device::take<pa_sink_info>, &found));
    return found;
}

SoundServer::Device SoundServer::required(bool isInput)
{
    const std::optional<Device> found = device(isInput);
    if (!found)
        throw PlatformError(isInput ? u"There is no microphone."_s : u"There is no device for sound."_s);
    return *found;
}

void SoundServer::carryOut(pa_operation *operation)
{
    if (!operation)
        throw noAnswer();
    const std::unique_ptr<pa_operation, void (*)(pa_operation *)> owned(operation, &pa_operation_unref);
    m_deadline = std::chrono::steady_clock::now() + Deadlines::answer;
    try {
        waitUntil([operation] { return pa_operation_get_state(operation) != PA_OPERATION_RUNNING; });
    } catch (const PlatformError &) {
        // Its results belong to the caller, who is leaving.
        pa_operation_cancel(operation);
        throw;
    }
}

void SoundServer::waitUntil(const std::function<bool()> &condition)
{
    while (!condition()) {
        if (std::chrono::steady_clock::now() > m_deadline)
            throw noAnswer();
        const int pause = std::chrono::microseconds(50ms).count();
        if (pa_mainloop_prepare(m_loop.get(), pause) < 0 || pa_mainloop_poll(m_loop.get()) < 0 ||
            pa_mainloop_dispatch(m_loop.get()) < 0)
            throw noAnswer();
    }
}
