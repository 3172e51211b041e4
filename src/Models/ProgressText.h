// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// How far a download is, as every front end says it: "37% of ~986 MB" for 0.375, the percentage truncated.
QString downloadProgressText(double progress, qint64 sizeMB);
