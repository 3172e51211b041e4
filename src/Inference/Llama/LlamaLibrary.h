// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// The llama.cpp that we are linked with: making it ready, and what it says of itself.
namespace LlamaLibrary {

struct Description
{
    QString build;       // its version, and the commit where that is known
    QStringList devices; // what a loaded model would run on, as the makers call it; the processor is one
};

// Sets in the environment what the library would set itself when it is made ready, and what keeps it from
// forking a debugger. Other threads read the environment without a lock, GLib's for example, and would crash:
// so this comes before there are any. Later calls change nothing.
void prepareEnvironment();

// Makes the library ready: where its back ends are plug-ins, as in distributions' packages, loads them, once
// for the process. Before anything else is asked of the library; on any thread but the main one.
void initialise();

// Looks for the devices, which may take moments and may get stuck in a graphics driver: not for the main
// thread. At no time while an engine loads or generates.
Description describe();

} // namespace LlamaLibrary
