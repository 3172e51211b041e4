// SPDX-License-Identifier: Apache-2.0
#include "Inference/Utf8.h"

#include <QStringDecoder>

#include <utility>

namespace {

// Stateless: an incomplete character at the end is an error.
constexpr QStringDecoder::Flags strict =
    QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom;

} // namespace

QString Utf8::repaired(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, strict);
    return decoder.decode(bytes);
}

std::optional<QString> Utf8::whole(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, strict);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

QString Utf8::Assembler::append(QByteArrayView bytes)
{
    m_pending.append(bytes);
    std::optional<QString> text = whole(m_pending);
    if (!text)
        return {};
    m_pending.clear();
    return *std::move(text);
}
