// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pasting/DataPipes.h"

#include "Desktop/PlatformError.h"

#include <QDeadlineTimer>

#include <array>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

constexpr qsizetype largest = 64 * 1024 * 1024;

void doNotBlock(const DataPipes::Descriptor &descriptor)
{
    fcntl(descriptor.number(), F_SETFL, fcntl(descriptor.number(), F_GETFL) | O_NONBLOCK);
}

int remaining(const QDeadlineTimer &deadline)
{
    return static_cast<int>(deadline.remainingTime());
}

// Reads what is there. Returns false at the end.
bool readSome(int descriptor, QByteArray &data)
{
    std::array<char, 65536> buffer;
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count > 0)
        data.append(buffer.data(), count);
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

bool isRead(int descriptor)
{
    int unread = 0;
    return ioctl(descriptor, FIONREAD, &unread) == 0 && unread == 0;
}

bool isClosedByReader(int descriptor)
{
    pollfd question{descriptor, 0, 0};
    return poll(&question, 1, 0) > 0 && (question.revents & POLLERR);
}

} // namespace

DataPipes::Descriptor::~Descriptor()
{
    close(m_number);
}

DataPipes::Pipe DataPipes::create()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw PlatformError(u"There are too many open files."_s);
    return {std::make_shared<Descriptor>(ends[0]), std::make_shared<Descriptor>(ends[1])};
}

QList<QByteArray> DataPipes::readAll(const QList<SharedDescriptor> &pipes, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    QList<QByteArray> contents(pipes.size());
    std::vector<pollfd> open;
    for (const SharedDescriptor &pipe : pipes) {
        doNotBlock(*pipe);
        open.push_back({pipe->number(), POLLIN, 0});
    }
    qsizetype unfinished = pipes.size();
    while (unfinished > 0) {
        qsizetype size = 0;
        if (poll(open.data(), open.size(), remaining(deadline)) <= 0)
            throw PlatformError(
                u"The clipboard's application doesn't hand out its content, so nothing was pasted."_s);
        for (std::size_t index = 0; index < open.size(); ++index) {
            QByteArray &content = contents[qsizetype(index)];
            if (open[index].fd >= 0 && open[index].revents && !readSome(open[index].fd, content)) {
                open[index].fd = -1; // poll ignores it
                --unfinished;
            }
            size += content.size();
        }
        if (size > largest)
            throw PlatformError(u"The clipboard's content is too large to be kept, so nothing was pasted."_s);
    }
    return contents;
}

bool DataPipes::deliver(const QByteArray &data, const SharedDescriptor &pipe, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    doNotBlock(*pipe);
    pollfd question{pipe->number(), POLLOUT, 0};
    for (qsizetype written = 0; written < data.size();) {
        if (poll(&question, 1, remaining(deadline)) <= 0 || (question.revents & POLLERR))
            return false;
        const ssize_t count =
            write(pipe->number(), data.constData() + written, std::size_t(data.size() - written));
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        written += std::max<ssize_t>(count, 0);
    }
    while (!isRead(pipe->number())) {
        if (isClosedByReader(pipe->number()) || deadline.hasExpired())
            return false;
        std::this_thread::sleep_for(1ms);
    }
    return true;
}
