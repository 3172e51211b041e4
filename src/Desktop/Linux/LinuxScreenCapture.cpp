// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/LinuxScreenCapture.h"

#include "Desktop/Linux/X11/Picture.h"

LinuxScreenCapture::LinuxScreenCapture(X11Display &display) : m_display(display) {}

QCoro::Task<void> LinuxScreenCapture::capture(QString path)
{
    const auto take = [this] { return pictureOfScreen(m_display.connection()); };
    const QImage picture = co_await m_display.run(take);
    co_await m_file.write(picture, path);
}
