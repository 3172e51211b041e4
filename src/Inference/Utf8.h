// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// UTF-8 as the model's bytes need it. Pure; any thread.
namespace Utf8 {

// The text of these bytes, every invalid sequence replaced by U+FFFD. A byte order mark is text like any
// other.
QString repaired(QByteArrayView bytes);

// The text of these bytes, or nothing if they are not valid UTF-8 from the first to the last.
std::optional<QString> whole(QByteArrayView bytes);

// Puts together text that arrives in pieces whose borders may cut a character. One object a text.
class Assembler
{
public:
    // All text that has become whole with these bytes; empty while a character is unfinished.
    QString append(QByteArrayView bytes);

private:
    QByteArray m_pending;
};

} // namespace Utf8
