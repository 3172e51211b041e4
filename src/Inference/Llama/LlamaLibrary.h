// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// Initialises llama.cpp and describes it.
namespace LlamaLibrary {

struct Description
{
    QString build;       // version, and commit if known
    QStringList devices; // what a model would run on, the CPU included
};

// Sets the environment variables that llama.cpp would set itself, and one that keeps it from forking a
// debugger. Must be called before other threads exist, because libraries such as GLib read the environment
// without a lock. Idempotent.
void prepareEnvironment();

// Initialises the library and, once per process, loads plug-in back ends as used by distributions. Call it
// before any other llama.cpp function. Thread: any but main.
void initialise();

// Enumerates devices, which may hang in a graphics driver. Thread: any but main. Not while an engine loads or
// generates.
Description describe();

} // namespace LlamaLibrary
