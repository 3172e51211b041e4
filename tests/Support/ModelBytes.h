// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QString>

// Content of a file that passes the model check but cannot be run, for tests of everything around the engine.
namespace ModelBytes {

// Offset of the single tensor's data.
inline constexpr qsizetype dataStart = 128;

// A header with an architecture and one tensor filled with `fill`; `size` bytes in all.
inline QByteArray plausible(qsizetype size = 1000, char fill = 'w')
{
    constexpr quint32 version = 3;
    constexpr quint32 typeString = 8;
    constexpr quint32 typeByteTensor = 24;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    const auto writeText = [&stream](const QByteArray &text) {
        stream << static_cast<quint64>(text.size());
        stream.writeRawData(text.constData(), static_cast<int>(text.size()));
    };
    stream.writeRawData("GGUF", 4);
    stream << version << quint64(1) << quint64(1);
    writeText("general.architecture");
    stream << typeString;
    writeText("llama");
    writeText("token_embd.weight");
    stream << quint32(1) << static_cast<quint64>(size - dataStart) << typeByteTensor << quint64(0);
    bytes.resize(dataStart, '\0');
    return bytes + QByteArray(size - dataStart, fill);
}

// Writes such a file to `path`.
inline bool write(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(plausible()) > 0;
}

} // namespace ModelBytes
