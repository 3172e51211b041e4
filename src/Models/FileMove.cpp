// SPDX-License-Identifier: Apache-2.0
#include "Models/FileMove.h"

#include <QFileInfo>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::error_code copyReplacing(const fs::path &source, const fs::path &destination)
{
    fs::path beside = destination;
    beside += ".moving";
    std::error_code error;
    fs::copy_file(source, beside, fs::copy_options::overwrite_existing, error);
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
