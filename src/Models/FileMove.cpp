// SPDX-License-Identifier: Apache-2.0
#include "Models/FileMove.h"

#include <QFileInfo>

#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// Flushes a file to disk (fsync).
std::error_code synced(const fs::path &path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool safe = file >= 0 && ::fsync(file) == 0;
    const std::error_code error = safe ? std::error_code() : std::error_code(errno, std::generic_category());
    if (file >= 0)
        ::close(file);
    return error;
}

std::error_code copyReplacing(const fs::path &source, const fs::path &destination)
{
    fs::path beside = destination;
    beside += ".moving";
    std::error_code error;
    fs::copy_file(source, beside, fs::copy_options::overwrite_existing, error);
    if (!error)
        error = synced(beside);
    if (!error)
        fs::rename(beside, destination, error);
    std::error_code ignored;
    fs::remove(error ? beside : source, ignored);
    return error;
}

} // namespace

std::error_code moveReplacing(const QString &source, const QString &destination)
{
    const fs::path from = QFileInfo(source).filesystemFilePath();
    const fs::path to = QFileInfo(destination).filesystemFilePath();
    std::error_code error;
    fs::rename(from, to, error);
    if (error == std::errc::cross_device_link)
        return copyReplacing(from, to);
    return error;
}
