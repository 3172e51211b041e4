// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxScreenCapture.h"

#include "Desktop/Linux/X11/Picture.h"

#include <QSaveFile>

using namespace std::chrono_literals;

namespace {

void write(const QImage &picture, const QString &path)
{
    // The caller takes an existing file for success, so never leave a partial one.
    QSaveFile file(path);
    // `commit` doesn't detect a full disk, so write the buffer with `flush` first.
    if (file.open(QIODevice::WriteOnly) && picture.save(&file, "PNG") && file.flush())
        file.commit();
}

} // namespace

LinuxScreenCapture::LinuxScreenCapture(X11Display &display) : m_display(display) {}

QCoro::Task<void> LinuxScreenCapture::capture(QString path)
{
    const auto take = [this] { return pictureOfScreen(m_display.connection()); };
    const QImage picture = co_await m_display.run(take);
    if (picture.isNull())
        co_return;
    const auto save = [picture, path] { write(picture, path); };
    co_await m_writer.run(save, 10s);
}
