// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/ScreenCapture.h"

#include "Desktop/Linux/Wayland/Picture.h"

#include <wlr-screencopy-unstable-v1-client-protocol.h>

using namespace std::chrono_literals;

bool WaylandScreenCapture::isOfferedBy(const WaylandConnection &connection)
{
    return connection.offers(zwlr_screencopy_manager_v1_interface) && connection.offers(wl_shm_interface) &&
           connection.offers(wl_output_interface);
}

QCoro::Task<void> WaylandScreenCapture::capture(QString path)
{
    // Longer than each answer may take: there are several outputs.
    const QImage picture = co_await m_reader.run(&pictureOfOutputs, 10s);
    co_await m_file.write(picture, path);
}
