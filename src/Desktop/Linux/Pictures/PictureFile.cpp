// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Pictures/PictureFile.h"

#include <QSaveFile>

using namespace std::chrono_literals;

namespace {

void save(const QImage &picture, const QString &path)
{
    // The caller takes an existing file for success, so never leave a partial one.
    QSaveFile file(path);
    // `commit` doesn't detect a full disk, so write the buffer with `flush` first.
    if (file.open(QIODevice::WriteOnly) && picture.save(&file, "PNG") && file.flush())
        file.commit();
}

} // namespace

QCoro::Task<void> PictureFile::write(QImage picture, QString path)
{
    if (picture.isNull())
        co_return;
    const auto job = [picture, path] { save(picture, path); };
    co_await m_writer.run(job, 10s);
}
