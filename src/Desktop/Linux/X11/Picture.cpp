// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/X11/Picture.h"

#include <xcb/shm.h>

#include <sys/ipc.h>
#include <sys/shm.h>

namespace {

// A memory segment shared with the X server.
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
        // Freed with the last detach, even after a crash.
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
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint8_t depth = 0;

    qsizetype bytesPerLine() const { return qsizetype(width) * 4; }
    qsizetype bytes() const { return bytesPerLine() * height; }
    // 32 bits per pixel, 24 of them colour.
    bool isReadable() const { return bytes() > 0 && (depth == 24 || depth == 32); }
};

// The screen may have been resized since we connected.
Geometry geometryOf(X11Connection &connection)
{
    const auto cookie = xcb_get_geometry(connection.get(), connection.root());
    const X11Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection.get(), cookie, nullptr));
    return reply ? Geometry{reply->width, reply->height, reply->depth} : Geometry{};
}

QImage imageOf(const uchar *pixels, const Geometry &geometry)
{
    return QImage(pixels, geometry.width, geometry.height, geometry.bytesPerLine(), QImage::Format_RGB32)
        .copy();
}

QImage sharedPicture(X11Connection &connection, const Geometry &geometry)
{
    const SharedMemory memory(connection.get(), std::size_t(geometry.bytes()));
    if (!memory.isAttached())
        return QImage();
    const auto cookie =
        xcb_shm_get_image(connection.get(), connection.root(), 0, 0, geometry.width, geometry.height, ~0u,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, memory.segment(), 0);
    const X11Reply<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(connection.get(), cookie, nullptr));
    const bool isWhole = reply && reply->depth == geometry.depth && reply->size == geometry.bytes();
    return isWhole ? imageOf(memory.data(), geometry) : QImage();
}

QImage sentPicture(X11Connection &connection, const Geometry &geometry)
{
    const auto cookie = xcb_get_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(), 0, 0,
                                      geometry.width, geometry.height, ~0u);
    const X11Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.get(), cookie, nullptr));
    const bool isWhole =
        reply && reply->depth == geometry.depth && xcb_get_image_data_length(reply.get()) == geometry.bytes();
    return isWhole ? imageOf(xcb_get_image_data(reply.get()), geometry) : QImage();
}

} // namespace

QImage pictureOfScreen(X11Connection &connection)
{
    connection.requireAlive();
    const Geometry geometry = geometryOf(connection);
    QImage picture;
    if (geometry.isReadable()) {
        const auto *extension = xcb_get_extension_data(connection.get(), &xcb_shm_id);
        if (extension && extension->present)
            picture = sharedPicture(connection, geometry);
        if (picture.isNull())
            picture = sentPicture(connection, geometry);
    }
    connection.requireAlive();
    return picture;
}
