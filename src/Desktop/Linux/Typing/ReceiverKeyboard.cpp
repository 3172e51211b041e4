// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"

#include "Desktop/KeyRules.h"

using namespace std::chrono_literals;

namespace {

std::optional<RunningApplication> ownerOf(const std::optional<DesktopWindow> &window)
{
    if (!window)
        return std::nullopt;
    RunningApplication owner;
    owner.processIdentifier = window->process;
    owner.part = window->part;
    return owner;
}

} // namespace

QCoro::Task<bool> ReceiverKeyboard::strike(std::uint16_t virtualKey, RunningApplication receiver)
{
    KeyStroke stroke;
    stroke.virtualKey = virtualKey;
    const QList<KeyStroke> strokes{stroke};
    co_await post(strokes, 0us, receiver);
    co_return false;
}

QCoro::Task<DesktopWindow> ReceiverKeyboard::target(WindowSystem &windowSystem,
                                                    FrontmostWindow frontmostWindow,
                                                    std::optional<RunningApplication> receiver)
{
    const std::optional<DesktopWindow> window = co_await frontmostWindow();
    KeyRules::requireInFront(receiver, ownerOf(window));
    co_await windowSystem.bringForward(*window);
    co_return *window;
}
