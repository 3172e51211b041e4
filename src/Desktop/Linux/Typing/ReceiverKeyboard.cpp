// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Typing/ReceiverKeyboard.h"

#include "Desktop/KeyRules.h"

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

QCoro::Task<DesktopWindow> ReceiverKeyboard::target(WindowSystem &windowSystem,
                                                    FrontmostWindow frontmostWindow,
                                                    std::optional<RunningApplication> receiver)
{
    const std::optional<DesktopWindow> window = co_await frontmostWindow();
    KeyRules::requireInFront(receiver, ownerOf(window));
    co_await windowSystem.bringForward(*window);
    co_return *window;
}
