// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <pulse/pulseaudio.h>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

// A connection to the sound server, PulseAudio or PipeWire. Its functions throw PlatformError if the server
// doesn't answer in time. Thread: any one; they block.
class SoundServer
{
public:
    struct Level
    {
        int percent = 0; // of the level without amplification
        bool isMuted = false;
    };

    SoundServer();
    SoundServer(const SoundServer &) = delete;
    SoundServer &operator=(const SoundServer &) = delete;

    // The standard devices' levels; nothing without such a device.
    std::optional<Level> output();
    std::optional<Level> input();

    // Throw PlatformError if there is no such device.
    void setOutput(int percent);
    void setInput(int percent);
    void muteOutput(bool muted);

    // Plays a short tone and returns after it.
    void beep();

private:
    struct Device;

    std::optional<Device> device(bool isInput);
    Device required(bool isInput);
    void carryOut(pa_operation *operation);
    void waitUntil(const std::function<bool()> &condition);

    std::unique_ptr<pa_mainloop, void (*)(pa_mainloop *)> m_loop;
    std::unique_ptr<pa_context, void (*)(pa_context *)> m_context;
    std::chrono::steady_clock::time_point m_deadline;
};
