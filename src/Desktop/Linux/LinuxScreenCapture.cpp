// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxScreenCapture.h"

#include "Desktop/Linux/X11/Picture.h"

#include <QSaveFile>

using namespace std::chrono_literals;

namespace {

void write(const QImage &picture, const QString &path)
{
    // Whoever asked looks for the file: half a picture would look like success.
    QSaveFile file(path);
    // What is left in the buffer is written by `flush`; `commit` would not notice that the disk is full.
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
