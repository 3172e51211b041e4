// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11Picture.h"

#include "Desktop/PlatformError.h"

#include <xcb/shm.h>

#include <sys/ipc.h>
#include <sys/shm.h>

namespace {

// A piece of memory that the X server sees as well.
class SharedMemory
{
public:
    SharedMemory(xcb_connection_t *connection, std::size_t size) : m_connection(connection)
    {
        const int identifier = shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
        if (identifier < 0)
            return;
        m_data = shmat(identifier, nullptr, 0);
        if (m_data == reinterpret_cast<void *>(-1))
            m_data = nullptr;
        m_segment = xcb_generate_id(connection);
        const auto cookie = xcb_shm_attach_checked(connection, m_segment, std::uint32_t(identifier), 0);
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(connection, cookie));
        m_isAttached = !error && m_data && !xcb_connection_has_error(connection);
        // It goes with its last user, even if one of us ends unexpectedly.
        shmctl(identifier, IPC_RMID, nullptr);
    }
    ~SharedMemory()
    {
        if (m_isAttached)
            xcb_shm_detach(m_connection, m_segment);
        if (m_data)
            shmdt(m_data);
    }
    SharedMemory(const SharedMemory &) = delete;
    SharedMemory &operator=(const SharedMemory &) = delete;

    bool isAttached() const { return m_isAttached; }
    xcb_shm_seg_t segment() const { return m_segment; }
    const uchar *data() const { return static_cast<const uchar *>(m_data); }

private:
    xcb_connection_t *m_connection;
    void *m_data = nullptr;
    xcb_shm_seg_t m_segment = XCB_NONE;
    bool m_isAttached = false;
};

struct Geometry
{
    std::uint16_t width;
    std::uint16_t height;
    QImage::Format format;
    qsizetype bytesPerLine;
};

Geometry geometryOf(X11Connection &connection)
{
    // The screen may have changed its size since we connected.
    const auto cookie = xcb_get_geometry(connection.get(), connection.root());
    const X11Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection.get(), cookie, nullptr));
    if (!reply)
        throw PlatformError(QStringLiteral("The X server doesn't tell the size of the screen."));
    if (reply->depth != 24 && reply->depth != 32)
        throw PlatformError(
            QStringLiteral("A screen of %1 bits a pixel can't be captured.").arg(reply->depth));
    return {reply->width, reply->height, QImage::Format_RGB32, qsizetype(reply->width) * 4};
}

QImage imageOf(const uchar *pixels, const Geometry &geometry)
{
    return QImage(pixels, geometry.width, geometry.height, geometry.bytesPerLine, geometry.format).copy();
}

QImage sharedPicture(X11Connection &connection, const Geometry &geometry)
{
    const SharedMemory memory(connection.get(), std::size_t(geometry.bytesPerLine) * geometry.height);
    if (!memory.isAttached())
        return QImage();
    const auto cookie =
        xcb_shm_get_image(connection.get(), connection.root(), 0, 0, geometry.width, geometry.height, ~0u,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, memory.segment(), 0);
    const X11Reply<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(connection.get(), cookie, nullptr));
    return reply ? imageOf(memory.data(), geometry) : QImage();
}

QImage sentPicture(X11Connection &connection, const Geometry &geometry)
{
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), 0, 0,
                                      geometry.width, geometry.height, ~0u);
    const X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.get(), cookie, nullptr));
    if (!reply || xcb_get_image_data_length(reply.get()) < geometry.bytesPerLine * geometry.height)
        return QImage();
    return imageOf(xcb_get_image_data(reply.get()), geometry);
}

} // namespace

QImage pictureOfScreen(X11Connection &connection)
{
    connection.requireAlive();
    const Geometry geometry = geometryOf(connection);
    const auto *extension = xcb_get_extension_data(connection.get(), &xcb_shm_id);
    QImage picture;
    if (extension && extension->present)
        picture = sharedPicture(connection, geometry);
    if (picture.isNull())
        picture = sentPicture(connection, geometry);
    connection.requireAlive();
    if (picture.isNull())
        throw PlatformError(QStringLiteral("The X server doesn't hand out a picture of the screen."));
    return picture;
}
