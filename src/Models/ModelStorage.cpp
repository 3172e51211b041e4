// SPDX-License-Identifier: Apache-2.0
#include "Models/ModelStorage.h"

#include <QDir>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

ModelStorage ModelStorage::standard()
{
    const QString own = qEnvironmentVariable("ORVANE_HOME");
    if (!own.isEmpty())
        return {own, own + u"/Orvane/Orvane.conf"_s};
    return {QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                u"/Orvane/Orvane.conf"_s};
}

QString ModelStorage::modelsDirectory() const
{
    const QString path = applicationSupportDirectory + u"/Orvane/Models"_s;
    QDir().mkpath(path);
    return path;
}

QString ModelStorage::downloadsDirectory() const
{
    return applicationSupportDirectory + u"/Orvane/Downloads"_s;
}
