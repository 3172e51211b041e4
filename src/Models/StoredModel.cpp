// SPDX-License-Identifier: Apache-2.0
#include "Models/StoredModel.h"

#include "Inference/Llama/GgufFile.h"

#include <QFileInfo>

std::optional<StoredModel::Identity> StoredModel::identity(const QString &path)
{
    const QFileInfo file(path);
    if (!file.exists())
        return std::nullopt;
    return Identity{path, file.size(), file.metadataChangeTime()};
}

StoredModel::Condition StoredModel::examine(const QString &path)
{
    if (!QFileInfo::exists(path))
        return Condition::Missing;
    return GgufFile::examine(path) == GgufFile::Verdict::Plausible ? Condition::Plausible
                                                                   : Condition::Unusable;
}
