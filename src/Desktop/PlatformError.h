// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Base/LocalizedError.h"
#include "Base/Text.h"

#include <QString>

// A failure in a desktop service. The message is the platform's own text, unwrapped, cleaned of line breaks
// and control characters.
class PlatformError : public LocalizedError
{
public:
    explicit PlatformError(const QString &message) : m_message(Text::cleaned(message).trimmed()) {}
    QString errorDescription() const override { return m_message; }

private:
    QString m_message;
};
