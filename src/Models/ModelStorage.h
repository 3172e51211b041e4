// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Where models and settings are stored. A plain value, usable from any thread.
struct ModelStorage
{
    // The per-user data folder ($XDG_DATA_HOME or "Application Support") that contains "Orvane".
    QString applicationSupportDirectory;
    // The settings file with "selectedModel".
    QString settingsFile;

    // The user's standard folders, or the folder named by the environment variable ORVANE_HOME.
    static ModelStorage standard();

    // "Orvane/Models" in the data folder; created if missing. If it cannot be created, later file operations
    // fail.
    QString modelsDirectory() const;

    // "Orvane/Downloads" for partial files, on the same file system as the models so that a finished file is
    // moved by a rename.
    QString downloadsDirectory() const;
};
