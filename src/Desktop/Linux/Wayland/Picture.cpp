// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/Picture.h"

#include "Desktop/Linux/Wayland/BlockingDispatch.h"
#include "Desktop/Linux/Wayland/Object.h"
#include "Desktop/Linux/Wayland/SharedBuffer.h"
#include "Desktop/PlatformError.h"

#include <QPainter>
#include <QRect>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include <wlr-screencopy-unstable-v1-client-protocol.h>
#include <xdg-output-unstable-v1-client-protocol.h>

using namespace Qt::StringLiterals;

namespace {

// A callback for events that don't matter here.
constexpr auto ignored = [](auto...) {};

using Display = WaylandObject<wl_display, wl_display_disconnect>;

Display connected()
{
    Display display(wl_display_connect(nullptr));
    if (!display)
        throw PlatformError(u"The Wayland compositor can't be reached."_s);
    return display;
}

struct Output
{
    WaylandObject<wl_output, wl_output_destroy> object;
    WaylandObject<zxdg_output_v1, zxdg_output_v1_destroy> arrangement;
    QPoint position;
    QSize mode;
    int scale = 1;
    std::int32_t transform = WL_OUTPUT_TRANSFORM_NORMAL;
    QRect logical; // empty unless the compositor reports it
    QImage picture;

    QRect area() const { return logical.isEmpty() ? QRect(position, mode / scale) : logical; }
    double sharpness() const { return double(picture.width()) / area().width(); }
};

Output &outputOf(void *data)
{
    return *static_cast<Output *>(data);
}

void readGeometry(void *data, wl_output *, std::int32_t x, std::int32_t y, std::int32_t, std::int32_t,
                  std::int32_t, const char *, const char *, std::int32_t transform)
{
    outputOf(data).position = QPoint(x, y);
    outputOf(data).transform = transform;
}

void readMode(void *data, wl_output *, std::uint32_t flags, std::int32_t width, std::int32_t height,
              std::int32_t)
{
    if (flags & WL_OUTPUT_MODE_CURRENT)
        outputOf(data).mode = QSize(width, height);
}

void readScale(void *data, wl_output *, std::int32_t factor)
{
    outputOf(data).scale = std::max(factor, 1);
}

void readLogicalPosition(void *data, zxdg_output_v1 *, std::int32_t x, std::int32_t y)
{
    outputOf(data).logical.moveTo(x, y);
}

void readLogicalSize(void *data, zxdg_output_v1 *, std::int32_t width, std::int32_t height)
{
    outputOf(data).logical.setSize(QSize(width, height));
}

// What capturing needs of the compositor.
struct Globals
{
    WaylandObject<wl_shm, wl_shm_destroy> memory;
    WaylandObject<zwlr_screencopy_manager_v1, zwlr_screencopy_manager_v1_destroy> capturing;
    WaylandObject<zxdg_output_manager_v1, zxdg_output_manager_v1_destroy> arranging;
    std::vector<std::unique_ptr<Output>> outputs;
};

void addOutput(Globals &globals, wl_output *object)
{
    static constexpr wl_output_listener listener{&readGeometry, &readMode, ignored,
                                                 &readScale,    ignored,   ignored};
    globals.outputs.push_back(std::make_unique<Output>());
    globals.outputs.back()->object.reset(object);
    wl_output_add_listener(object, &listener, globals.outputs.back().get());
}

void addGlobal(void *data, wl_registry *registry, std::uint32_t name, const char *interface,
               std::uint32_t version)
{
    auto &globals = *static_cast<Globals *>(data);
    const auto bind = [&](const wl_interface &wanted, std::uint32_t highest) -> void * {
        const bool isWanted = std::strcmp(interface, wanted.name) == 0;
        return isWanted ? wl_registry_bind(registry, name, &wanted, std::min(version, highest)) : nullptr;
    };
    if (void *shm = bind(wl_shm_interface, 1))
        globals.memory.reset(static_cast<wl_shm *>(shm));
    else if (void *capturing = bind(zwlr_screencopy_manager_v1_interface, 1)) // from 3 on also without memory
        globals.capturing.reset(static_cast<zwlr_screencopy_manager_v1 *>(capturing));
    else if (void *arranging = bind(zxdg_output_manager_v1_interface, 1))
        globals.arranging.reset(static_cast<zxdg_output_manager_v1 *>(arranging));
    else if (void *output = bind(wl_output_interface, 2))
        addOutput(globals, static_cast<wl_output *>(output));
}

void learnGlobals(wl_display *display, wl_registry *registry, Globals &globals)
{
    static constexpr wl_registry_listener listener{&addGlobal, ignored};
    wl_registry_add_listener(registry, &listener, &globals);
    BlockingDispatch::roundTrip(display);
    if (!globals.memory || !globals.capturing)
        throw PlatformError(u"The Wayland compositor doesn't offer screenshots."_s);
    if (globals.outputs.empty())
        throw PlatformError(u"There is no screen."_s);
}

void learnArrangement(wl_display *display, const Globals &globals)
{
    static constexpr zxdg_output_v1_listener listener{&readLogicalPosition, &readLogicalSize, ignored,
                                                      ignored, ignored};
    for (const std::unique_ptr<Output> &output : globals.outputs) {
        if (!globals.arranging)
            break;
        zxdg_output_manager_v1 *manager = globals.arranging.get();
        output->arrangement.reset(zxdg_output_manager_v1_get_xdg_output(manager, output->object.get()));
        zxdg_output_v1_add_listener(output->arrangement.get(), &listener, output.get());
    }
    BlockingDispatch::roundTrip(display);
}

struct Frame
{
    enum class State { Requested, Described, Ready, Failed };

    State state = State::Requested;
    SharedBuffer::Layout layout;
    bool isUpsideDown = false;
};

Frame &frameOf(void *data)
{
    return *static_cast<Frame *>(data);
}

void describe(void *data, zwlr_screencopy_frame_v1 *, std::uint32_t format, std::uint32_t width,
              std::uint32_t height, std::uint32_t stride)
{
    frameOf(data).layout = {format, width, height, stride};
    frameOf(data).state = Frame::State::Described;
}

void readFlags(void *data, zwlr_screencopy_frame_v1 *, std::uint32_t flags)
{
    frameOf(data).isUpsideDown = flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT;
}

void succeed(void *data, zwlr_screencopy_frame_v1 *, std::uint32_t, std::uint32_t, std::uint32_t)
{
    frameOf(data).state = Frame::State::Ready;
}

void fail(void *data, zwlr_screencopy_frame_v1 *)
{
    frameOf(data).state = Frame::State::Failed;
}

// Waits until the frame's state is no longer `state`.
void waitWhile(wl_display *display, const Frame &frame, Frame::State state)
{
    BlockingDispatch::until(display, [&frame, state] { return frame.state != state; });
    if (frame.state == Frame::State::Failed)
        throw PlatformError(u"A screen can't be captured; it may have been disconnected."_s);
}

QImage pictureOf(wl_display *display, const Globals &globals, const Output &output)
{
    if (output.transform != WL_OUTPUT_TRANSFORM_NORMAL)
        throw PlatformError(u"A rotated screen can't be captured."_s);
    static constexpr zwlr_screencopy_frame_v1_listener listener{&describe, &readFlags, &succeed, &fail,
                                                                ignored,   ignored,    ignored};
    constexpr std::int32_t withoutPointer = 0;
    Frame frame;
    const WaylandObject<zwlr_screencopy_frame_v1, zwlr_screencopy_frame_v1_destroy> object(
        zwlr_screencopy_manager_v1_capture_output(globals.capturing.get(), withoutPointer,
                                                  output.object.get()));
    zwlr_screencopy_frame_v1_add_listener(object.get(), &listener, &frame);
    waitWhile(display, frame, Frame::State::Requested);
    const SharedBuffer buffer(globals.memory.get(), frame.layout);
    zwlr_screencopy_frame_v1_copy(object.get(), buffer.get());
    waitWhile(display, frame, Frame::State::Described);
    return frame.isUpsideDown ? buffer.picture().mirrored() : buffer.picture();
}

QImage combined(const std::vector<std::unique_ptr<Output>> &outputs)
{
    QRect whole;
    double sharpness = 1;
    for (const std::unique_ptr<Output> &output : outputs) {
        whole |= output->area();
        sharpness = std::max(sharpness, output->sharpness());
    }
    QImage picture((QSizeF(whole.size()) * sharpness).toSize(), QImage::Format_RGB32);
    if (picture.isNull())
        return picture;
    picture.fill(Qt::black);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(sharpness, sharpness);
    painter.translate(-whole.topLeft());
    for (const std::unique_ptr<Output> &output : outputs)
        painter.drawImage(output->area(), output->picture);
    return picture;
}

} // namespace

QImage pictureOfOutputs()
{
    const Display display = connected();
    const WaylandObject<wl_registry, wl_registry_destroy> registry(wl_display_get_registry(display.get()));
    Globals globals;
    learnGlobals(display.get(), registry.get(), globals);
    learnArrangement(display.get(), globals);
    for (const std::unique_ptr<Output> &output : globals.outputs) {
        output->picture = pictureOf(display.get(), globals, *output);
        if (output->area().isEmpty())
            throw PlatformError(u"The size of a screen isn't known."_s);
    }
    return combined(globals.outputs);
}
