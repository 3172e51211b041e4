// SPDX-License-Identifier: Apache-2.0
#include "Support/ProcessorWaits.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace {

using Duration = ProcessorWaits::Duration;

// The process behind a local display's socket; 0 if none.
int findDisplayServer()
{
    const char *const display = std::getenv("DISPLAY");
    if (!display || display[0] != ':')
        return 0;
    const int number = std::atoi(display + 1);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/tmp/.X11-unix/X" + std::to_string(number);
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ucred peer{};
    socklen_t size = sizeof peer;
    const bool isKnown =
        ::connect(descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
        ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0;
    ::close(descriptor);
    return isKnown ? peer.pid : 0;
}

int displayServer()
{
    static const int process = findDisplayServer();
    return process;
}

Duration waitedSoFar(const std::string &folder)
{
    std::ifstream counters(folder + "/schedstat");
    Duration::rep ran = 0;
    Duration::rep waited = 0;
    counters >> ran >> waited;
    return Duration(waited);
}

} // namespace

ProcessorWaits::ProcessorWaits()
{
    std::error_code failure;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/task", failure)) {
        const int thread = std::atoi(entry.path().filename().c_str());
        if (thread != ::gettid())
            m_waits[thread] = waitedSoFar(entry.path().string());
    }
    if (const int server = displayServer())
        m_waits[server] = waitedSoFar("/proc/" + std::to_string(server));
}

ProcessorWaits::Duration ProcessorWaits::since(const ProcessorWaits &earlier) const
{
    Duration sum{};
    for (const auto &[thread, waited] : m_waits) {
        const auto before = earlier.m_waits.find(thread);
        sum += before == earlier.m_waits.end() ? waited : waited - before->second;
    }
    return sum;
}
