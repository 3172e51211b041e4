// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

// The file name for a download of `url`: the last component of its path, or "model.gguf" if that is unusable.
// Never contains a path separator. Any thread.
QString downloadName(const QUrl &url);
