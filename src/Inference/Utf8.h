// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// UTF-8 decoding of model output. Pure; any thread.
namespace Utf8 {

// Decodes bytes, replacing invalid sequences by U+FFFD. A byte order mark is kept.
QString repaired(QByteArrayView bytes);

// Decodes bytes, or returns nothing unless all of them are valid UTF-8.
std::optional<QString> whole(QByteArrayView bytes);

// Assembles text from pieces that may split a character. One instance per text.
class Assembler
{
public:
    // Returns the text completed by these bytes; empty while a character is incomplete.
    QString append(QByteArrayView bytes);

private:
    QByteArray m_pending;
};

} // namespace Utf8
