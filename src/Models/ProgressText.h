// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Download progress for display: "37% of ~986 MB" for 0.375; the percentage is truncated.
QString downloadProgressText(double progress, qint64 sizeMB);
