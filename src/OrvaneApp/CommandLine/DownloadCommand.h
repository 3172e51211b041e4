// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"
#include "OrvaneApp/CommandLine/Terminal.h"

#include <QObject>
#include <QString>

// `orvane models download`: downloads the selected model, replacing an unusable file, and shows progress.
// Thread: main, on which it reads that file's metadata; nothing is owned.
class DownloadCommand : public QObject
{
    Q_OBJECT

public:
    DownloadCommand(ModelManager &models, Terminal &terminal, QObject *parent = nullptr);

    // Asynchronous; ends with `finished`. Call once.
    void start();

    // Stops the download; the partial file is kept.
    void interrupt();

    // "[#####---------------] 25% of ~986 MB"; the percentage is truncated, `width` is the number of cells.
    static QString bar(double progress, int width, qint64 sizeMB);

Q_SIGNALS:
    void finished(int exitStatus);

private:
    void showState();
    void showProgress(double progress);
    void end(int exitStatus);

    ModelManager &m_models;
    Terminal &m_terminal;
    int m_lastTenth = 0; // the last tenth printed when there is no progress bar
    bool m_hasEnded = false;
};
