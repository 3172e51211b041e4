// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/ModelManager.h"
#include "OrvaneApp/CommandLine/Terminal.h"

#include <QObject>
#include <QString>

// `orvane models download`: gets the selected model, in place of a file that can't be used if there is one,
// and shows how far it is. Main thread, which looks into that file; nothing is owned.
class DownloadCommand : public QObject
{
    Q_OBJECT

public:
    DownloadCommand(ModelManager &models, Terminal &terminal, QObject *parent = nullptr);

    // Returns at once; `finished` tells the end. Once in the object's life.
    void start();

    // The user wants it to stop. What has been fetched is kept for the next time.
    void interrupt();

    // "[#####---------------] 25% of ~986 MB", the percentage truncated; `width` is the number of cells.
    static QString bar(double progress, int width, qint64 sizeMB);

Q_SIGNALS:
    void finished(int exitStatus);

private:
    void showState();
    void showProgress(double progress);
    void end(int exitStatus);

    ModelManager &m_models;
    Terminal &m_terminal;
    int m_lastTenth = 0; // the last tenth that was said where there is no bar
    bool m_hasEnded = false;
};
