// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/BoundedQueue.h"

#include <QImage>
#include <QString>

// Writes pictures to PNG files on a thread of its own. Thread: main.
class PictureFile
{
public:
    // Writes the whole picture or leaves no file; a null picture leaves none. Throws PlatformError if the
    // disk takes too long.
    QCoro::Task<void> write(QImage picture, QString path);

private:
    BoundedQueue m_writer{QStringLiteral("desktop.capture"), QStringLiteral("The disk")};
};
