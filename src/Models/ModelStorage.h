// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Where the models and the user's choice are kept. A plain value, usable from any thread.
struct ModelStorage
{
    // The per-user data folder ($XDG_DATA_HOME or "Application Support"); "Orvane" lies below it.
    QString applicationSupportDirectory;
    // The settings file that holds "selectedModel".
    QString settingsFile;

    // The user's own folders, or the one folder for all of it that ORVANE_HOME names in the environment.
    static ModelStorage standard();

    // "Orvane/Models" below the data folder. Each call makes sure that it exists; where it cannot be made,
    // that shows later as a missing file or a failed move.
    QString modelsDirectory() const;

    // "Orvane/Downloads": unfinished downloads, beside the models so that a finished one moves in one step.
    QString downloadsDirectory() const;
};
