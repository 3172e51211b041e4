// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/GgufFile.h"

#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QSet>
#include <QtNumeric>

#include <ggml.h>

#include <algorithm>
#include <bit>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

using GgufFile::Verdict;

enum class ValueType : quint32 { String = 8, Array = 9 };

constexpr quint32 unsigned32 = 4;
constexpr quint32 defaultAlignment = 32;
constexpr quint32 mostDimensions = 4;
constexpr quint32 mostLayers = 512;
constexpr quint64 longestName = 65535;

// The smallest possible entries. A tensor: name length, dimension count, one dimension, type, offset. A
// value: key length, type, one byte.
constexpr quint64 leastTensorBytes = 8 + 4 + 8 + 4 + 8;
constexpr quint64 leastValueBytes = 8 + 4 + 1;

std::optional<quint64> fixedSize(quint32 type)
{
    switch (type) {
    case 0: // unsigned and signed bytes, booleans
    case 1:
    case 7:
        return 1;
    case 2: // 16-bit numbers
    case 3:
        return 2;
    case unsigned32:
    case 5: // signed, floating point
    case 6:
        return 4;
    case 10: // 64-bit numbers
    case 11:
    case 12:
        return 8;
    default:
        return std::nullopt;
    }
}

// Size of a tensor's data, at least 1 so that its offset is checked; nothing on overflow. Unknown types are
// left to llama.cpp to report.
std::optional<quint64> tensorBytes(quint32 type, quint64 elements)
{
    if (type >= GGML_TYPE_COUNT || ggml_blck_size(ggml_type(type)) <= 0)
        return 1;
    const auto blocks = elements / static_cast<quint64>(ggml_blck_size(ggml_type(type)));
    quint64 bytes = 0;
    if (qMulOverflow(blocks, static_cast<quint64>(ggml_type_size(ggml_type(type))), &bytes))
        return std::nullopt;
    return std::max<quint64>(bytes, 1);
}

// Reads a file from its start to the end of the tensor list. Keeps the first fault; later reads return 0.
class Examination
{
public:
    explicit Examination(QFile &file) : m_file(file), m_stream(&file)
    {
        m_stream.setByteOrder(QDataStream::LittleEndian);
    }

    Verdict verdict()
    {
        readHeader();
        for (quint64 i = 0; i < m_valueCount && isGood(); ++i)
            readKeyAndValue();
        for (quint64 i = 0; i < m_tensorCount && isGood(); ++i)
            readTensor();
        checkData();
        if (m_tensorCount == 0 || !m_hasArchitecture)
            refuse(Verdict::NoModel);
        return m_verdict;
    }

private:
    bool isGood() const { return m_verdict == Verdict::Plausible; }

    void refuse(Verdict verdict)
    {
        if (isGood())
            m_verdict = verdict;
    }

    quint64 remaining() const { return static_cast<quint64>(m_file.size() - m_file.pos()); }

    template <typename Number>
    Number number()
    {
        Number value = 0;
        m_stream >> value;
        if (m_stream.status() != QDataStream::Ok)
            refuse(Verdict::CutShort);
        return isGood() ? value : 0;
    }

    void skip(quint64 bytes)
    {
        if (bytes > remaining())
            refuse(Verdict::CutShort);
        else
            m_file.skip(static_cast<qint64>(bytes)); // unlike seek, keeps the read-ahead buffer
    }

    QByteArray string(quint64 longest)
    {
        const quint64 length = number<quint64>();
        if (length > remaining())
            refuse(Verdict::CutShort);
        else if (length > longest)
            refuse(Verdict::Malformed);
        return isGood() ? m_file.read(static_cast<qint64>(length)) : QByteArray();
    }

    void readHeader()
    {
        if (m_file.read(4) != "GGUF")
            return refuse(Verdict::NotGguf);
        const auto version = number<quint32>();
        if (isGood() && version != 2 && version != 3)
            return refuse(Verdict::UnknownVersion);
        m_tensorCount = number<quint64>();
        m_valueCount = number<quint64>();
        if (m_tensorCount > remaining() / leastTensorBytes || m_valueCount > remaining() / leastValueBytes)
            refuse(Verdict::CutShort);
    }

    void readKeyAndValue()
    {
        const QByteArray key = string(longestName);
        const auto type = number<quint32>();
        m_hasArchitecture = m_hasArchitecture || key == "general.architecture";
        if (type == static_cast<quint32>(ValueType::Array))
            readArray(key);
        else if (type == static_cast<quint32>(ValueType::String))
            skip(number<quint64>());
        else if (type == unsigned32)
            checkNumber(key, number<quint32>());
        else if (const std::optional<quint64> size = fixedSize(type))
            skip(*size);
        else
            refuse(Verdict::Malformed);
    }

    // llama.cpp aborts on an implausible layer count.
    void checkNumber(const QByteArray &key, quint32 value)
    {
        if (key == "general.alignment" && std::has_single_bit(value))
            m_alignment = value;
        else if (key == "general.alignment" ||
                 (key.endsWith(".block_count") && (value == 0 || value > mostLayers)))
            refuse(Verdict::Malformed);
    }

    void readArray(const QByteArray &key)
    {
        const auto type = number<quint32>();
        const auto count = number<quint64>();
        if (type == static_cast<quint32>(ValueType::String))
            return key == "tokenizer.ggml.tokens" ? readTokens(count) : skipStrings(count);
        const std::optional<quint64> size = fixedSize(type);
        if (!size)
            refuse(Verdict::Malformed); // no model contains nested arrays
        else if (count > remaining() / *size)
            refuse(Verdict::CutShort);
        else
            skip(count * *size);
    }

    void skipStrings(quint64 count)
    {
        for (quint64 i = 0; i < count && isGood(); ++i)
            skip(number<quint64>());
    }

    // llama.cpp aborts on duplicate tokens; it renames empty ones.
    void readTokens(quint64 count)
    {
        QSet<QByteArray> tokens;
        for (quint64 i = 0; i < count && isGood(); ++i) {
            const QByteArray token = string(longestName);
            if (!token.isEmpty() && tokens.contains(token))
                refuse(Verdict::Malformed);
            tokens.insert(token);
        }
    }

    void readTensor()
    {
        string(longestName);
        const auto dimensions = number<quint32>();
        if (dimensions > mostDimensions)
            refuse(Verdict::Malformed);
        quint64 elements = 1;
        for (quint32 i = 0; i < dimensions && isGood(); ++i) {
            const auto length = number<qint64>();
            if (length < 0 || qMulOverflow(elements, static_cast<quint64>(length), &elements))
                refuse(Verdict::Malformed);
        }
        const std::optional<quint64> bytes = tensorBytes(number<quint32>(), elements);
        quint64 end = 0;
        if (!bytes || qAddOverflow(number<quint64>(), *bytes, &end))
            refuse(Verdict::Malformed);
        m_end = std::max(m_end, end);
    }

    // Every tensor must lie within the file.
    void checkData()
    {
        if (!isGood() || m_tensorCount == 0)
            return;
        const auto position = static_cast<quint64>(m_file.pos());
        const quint64 padding = (m_alignment - position % m_alignment) % m_alignment;
        if (padding > remaining() || m_end > remaining() - padding)
            refuse(Verdict::CutShort);
    }

    QFile &m_file;
    QDataStream m_stream;
    Verdict m_verdict = Verdict::Plausible;
    quint64 m_tensorCount = 0;
    quint64 m_valueCount = 0;
    bool m_hasArchitecture = false;
    quint64 m_end = 0; // largest end offset of a tensor, relative to the start of the data
    quint32 m_alignment = defaultAlignment;
};

} // namespace

Verdict GgufFile::examine(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return Verdict::Unreadable;
    return Examination(file).verdict();
}

QLatin1String GgufFile::explanation(Verdict verdict)
{
    switch (verdict) {
    case Verdict::Plausible:
        return "The file looks like a model."_L1;
    case Verdict::Unreadable:
        return "The file cannot be read."_L1;
    case Verdict::NotGguf:
        return "The file is no GGUF file."_L1;
    case Verdict::UnknownVersion:
        return "The file has a version of GGUF that is not known."_L1;
    case Verdict::CutShort:
        return "The file ends too early."_L1;
    case Verdict::Malformed:
        return "The file contradicts itself."_L1;
    case Verdict::NoModel:
        return "The file holds no model."_L1;
    }
    Q_UNREACHABLE();
}
