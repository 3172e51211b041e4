// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QImage>

#include <cstdint>

#include <wayland-client.h>

// A buffer of pixels that the compositor fills.
class SharedBuffer
{
public:
    struct Layout
    {
        std::uint32_t format = 0;
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        std::uint32_t stride = 0;
    };

    // Throws PlatformError if the layout isn't supported or there is no memory.
    SharedBuffer(wl_shm *memory, const Layout &layout);
    ~SharedBuffer();
    SharedBuffer(const SharedBuffer &) = delete;
    SharedBuffer &operator=(const SharedBuffer &) = delete;

    wl_buffer *get() const { return m_buffer; }

    // A copy of the pixels.
    QImage picture() const;

private:
    Layout m_layout;
    QImage::Format m_format;
    std::size_t m_size = 0;
    void *m_data = nullptr;
    wl_buffer *m_buffer = nullptr;
};
