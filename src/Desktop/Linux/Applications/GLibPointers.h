// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <memory>

// Owning pointers for GLib types.

struct GObjectRelease
{
    void operator()(void *object) const { g_object_unref(object); }
};
template <typename Object>
using GObjectPointer = std::unique_ptr<Object, GObjectRelease>;

struct GErrorRelease
{
    void operator()(GError *error) const { g_error_free(error); }
};
using GErrorPointer = std::unique_ptr<GError, GErrorRelease>;

struct GKeyFileRelease
{
    void operator()(GKeyFile *file) const { g_key_file_free(file); }
};
using GKeyFilePointer = std::unique_ptr<GKeyFile, GKeyFileRelease>;

struct GStringRelease
{
    void operator()(char *text) const { g_free(text); }
};
using GStringPointer = std::unique_ptr<char, GStringRelease>;
