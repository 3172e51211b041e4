// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QString>

#include <optional>

// The text in the desktop's clipboard. Thread: main.
class ClipboardText
{
public:
    virtual ~ClipboardText() = default;

    // Nothing if there is no text. Throws PlatformError.
    virtual QCoro::Task<std::optional<QString>> read() = 0;

    // Replaces whatever is in the clipboard. The text is there as long as this object, and longer where the
    // desktop keeps it. Throws PlatformError.
    virtual QCoro::Task<void> write(QString text) = 0;
};
