// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/SharedBuffer.h"

#include "Desktop/PlatformError.h"

#include <limits>

#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// The formats without alpha: a screen is opaque.
QImage::Format imageFormat(std::uint32_t format)
{
    switch (format) {
    case WL_SHM_FORMAT_ARGB8888:
    case WL_SHM_FORMAT_XRGB8888:
        return QImage::Format_RGB32;
    case WL_SHM_FORMAT_ABGR8888:
    case WL_SHM_FORMAT_XBGR8888:
        return QImage::Format_RGBX8888;
    default:
        throw PlatformError(u"The screen has an unsupported pixel format (0x%1)."_s.arg(format, 0, 16));
    }
}

std::size_t sizeOf(const SharedBuffer::Layout &layout)
{
    constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
    const std::uint64_t size = std::uint64_t(layout.stride) * layout.height;
    if (layout.width == 0 || layout.stride / 4 < layout.width || size == 0 || size > largest)
        throw PlatformError(u"The screen has an unsupported size."_s);
    return size;
}

} // namespace

SharedBuffer::SharedBuffer(wl_shm *memory, const Layout &layout)
    : m_layout(layout), m_format(imageFormat(layout.format)), m_size(sizeOf(layout))
{
    const int descriptor = memfd_create("orvane-screenshot", MFD_CLOEXEC);
    const bool isLarge = descriptor >= 0 && ftruncate(descriptor, off_t(m_size)) == 0;
    m_data = isLarge ? mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0) : MAP_FAILED;
    if (m_data != MAP_FAILED) {
        wl_shm_pool *pool = wl_shm_create_pool(memory, descriptor, std::int32_t(m_size));
        m_buffer = wl_shm_pool_create_buffer(pool, 0, std::int32_t(layout.width), std::int32_t(layout.height),
                                             std::int32_t(layout.stride), layout.format);
        wl_shm_pool_destroy(pool);
    }
    if (descriptor >= 0)
        ::close(descriptor);
    if (!m_buffer)
        throw PlatformError(u"There is no memory for a screenshot."_s);
}

SharedBuffer::~SharedBuffer()
{
    wl_buffer_destroy(m_buffer);
    munmap(m_data, m_size);
}

QImage SharedBuffer::picture() const
{
    return QImage(static_cast<const uchar *>(m_data), int(m_layout.width), int(m_layout.height),
                  qsizetype(m_layout.stride), m_format)
        .copy();
}
