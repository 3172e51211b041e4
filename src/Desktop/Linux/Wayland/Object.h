// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

// Owns a Wayland object; `destroy` is the request or function that ends it:
//     WaylandObject<wl_buffer, wl_buffer_destroy> buffer;
// For source files only: these functions are different ones in each of them.
template <typename Object, void (*destroy)(Object *)>
struct WaylandObjectDeleter
{
    void operator()(Object *object) const { destroy(object); }
};

template <typename Object, void (*destroy)(Object *)>
using WaylandObject = std::unique_ptr<Object, WaylandObjectDeleter<Object, destroy>>;
