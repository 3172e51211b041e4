// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Linux/WindowSystem/WindowSnapshot.h"

// A small sample desktop for tests of the window rules.
namespace SampleDesktop {

inline constexpr qint64 own = 100;
inline constexpr qint64 editor = 200;
inline constexpr qint64 browser = 300;

inline DesktopWindow window(std::uint32_t identifier, qint64 process,
                            DesktopWindow::Kind kind = DesktopWindow::Kind::Application)
{
    DesktopWindow result;
    result.identifier = identifier;
    result.process = process;
    result.kind = kind;
    result.belongsInTaskBar = result.isOrdinary();
    return result;
}

// Our palette (1) over an editor's window (2) and dialog (3), a browser (4) and the desktop's background (5).
inline WindowSnapshot desktop()
{
    WindowSnapshot snapshot;
    snapshot.windows = {window(5, 500, DesktopWindow::Kind::Shell), window(4, browser), window(2, editor),
                        window(3, editor, DesktopWindow::Kind::Dialog), window(1, own)};
    snapshot.stacking = {1, 3, 2, 4, 5};
    snapshot.activeWindow = 1;
    return snapshot;
}

} // namespace SampleDesktop
