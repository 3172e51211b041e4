// SPDX-License-Identifier: Apache-2.0
#include "Models/ProgressText.h"

using namespace Qt::StringLiterals;

QString downloadProgressText(double progress, qint64 sizeMB)
{
    return u"%1% of ~%2 MB"_s.arg(static_cast<int>(progress * 100)).arg(sizeMB);
}
