// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>
#include <memory>

// The pipes through which clients of a compositor exchange data. The functions block, each at most for its
// limit. Any thread.
namespace DataPipes {

// How long another program may take for all its data.
inline constexpr std::chrono::milliseconds slowestApplication{5000};

// Closes the file descriptor at the end.
class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor();
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return m_number; }

private:
    int m_number;
};
using SharedDescriptor = std::shared_ptr<Descriptor>;

struct Pipe
{
    SharedDescriptor reading;
    SharedDescriptor writing;
};

// Throws PlatformError.
Pipe create();

// Reads each until its other end is closed. Throws PlatformError if that takes longer, or if all together are
// larger than 64 MiB.
QList<QByteArray> readAll(const QList<SharedDescriptor> &pipes, std::chrono::milliseconds limit);

// Writes the data and waits until it has been read. Returns false if the other end is closed before, or on
// timeout.
bool deliver(const QByteArray &data, const SharedDescriptor &pipe, std::chrono::milliseconds limit);

} // namespace DataPipes
