// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QUrl>

// The file name under which a download of `url` is kept: the last component of its path, or "model.gguf" when
// that is none. Never leads out of a folder. On any thread.
QString downloadName(const QUrl &url);
