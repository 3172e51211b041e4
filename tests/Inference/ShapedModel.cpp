// SPDX-License-Identifier: Apache-2.0
#include "Inference/ShapedModel.h"

#include "Inference/GgufWriter.h"

#include <QRegularExpression>
#include <QSet>

#include <cstring>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

enum TokenKind { Normal = 1, Unknown = 2, Control = 3, UserDefined = 4, Byte = 6 };

// Block layouts, defined in the library's private headers: 256 weights per block.
constexpr size_t blockWeights = 256;
constexpr size_t q4Bytes = 144;
constexpr size_t q6Bytes = 210;
constexpr quint16 q4Scale = 0x068E;  // half-precision 1.0e-4, 7.5e-4 and 2.0e-5:
constexpr quint16 q4Offset = 0x1225; // random bits then give weights around 0 of about 0.02
constexpr quint16 q6Scale = 0x0150;

quint64 next(quint64 &random)
{
    random ^= random << 13;
    random ^= random >> 7;
    random ^= random << 17;
    return random;
}

void fillAtRandom(std::span<quint8> bytes, quint64 &random)
{
    for (size_t at = 0; at < bytes.size(); at += sizeof random) {
        const quint64 bits = next(random);
        std::memcpy(&bytes[at], &bits, std::min(sizeof bits, bytes.size() - at));
    }
}

void setHalf(std::span<quint8> bytes, size_t at, quint16 half)
{
    std::memcpy(&bytes[at], &half, sizeof half);
}

} // namespace

ShapedModel ShapedModel::qwen2_1_5b()
{
    ShapedModel model;
    model.m_architecture = "qwen2";
    model.m_chatTemplate = "{% for message in messages %}<|im_start|>{{ message.role }}";
    model.m_controlTokens = {"<|endoftext|>", "<|im_start|>", "<|im_end|>"};
    model.m_endOfTurn = "<|im_end|>";
    model.m_hasBiases = true;
    model.m_rotationBase = 1e6F;
    model.m_layers = 28;
    model.m_width = 1536;
    model.m_heads = 12;
    model.m_keyHeads = 2;
    model.m_feedForward = 8960;
    model.m_tokens = 151936;
    return model;
}

ShapedModel ShapedModel::llama3_2_3b()
{
    ShapedModel model;
    model.m_architecture = "llama";
    model.m_chatTemplate =
        "{% for message in messages %}<|start_header_id|>{{ message.role }}<|end_header_id|>";
    model.m_controlTokens = {"<|begin_of_text|>", "<|start_header_id|>", "<|end_header_id|>", "<|eot_id|>"};
    model.m_endOfTurn = "<|eot_id|>";
    model.m_hasRotationFactors = true;
    model.m_rotationBase = 5e5F;
    model.m_layers = 28;
    model.m_width = 3072;
    model.m_heads = 24;
    model.m_keyHeads = 8;
    model.m_feedForward = 8192;
    model.m_tokens = 128256;
    return model;
}

ShapedModel ShapedModel::cut(qint32 layers, qint32 tokens) const
{
    ShapedModel model = *this;
    model.m_layers = layers;
    model.m_tokens = tokens;
    return model;
}

void ShapedModel::setTexts(const QList<QString> &texts)
{
    static const QRegularExpression word(u" ?\\p{L}+|\\d{1,3}|[^\\s\\p{L}\\d]+|\\s+"_s);
    QSet<QByteArray> words;
    for (const QString &text : texts) {
        for (const QRegularExpressionMatch &match : word.globalMatch(text)) {
            const QByteArray found = match.captured().toUtf8();
            if (found.size() > 1)
                words.insert(found);
        }
    }
    m_words = words.values();
    std::sort(m_words.begin(), m_words.end());
}

void ShapedModel::write(const QString &path, quint64 seed) const
{
    GgufWriter writer(byteCount());
    writeMetadata(writer);
    writeVocabulary(writer);
    quint64 random = seed;
    // Input and output share one matrix, at higher precision.
    writeMatrix(writer, random, "token_embd.weight", Precision::More, m_width, m_tokens);
    writer.add("output_norm.weight", m_width, 1, 1);
    if (m_hasRotationFactors)
        writer.add("rope_freqs.weight", m_headWidth / 2, 1, 1);
    for (qint32 layer = 0; layer < m_layers; ++layer)
        writeLayer(writer, random, layer);
    writer.write(path);
}

void ShapedModel::writeMetadata(GgufWriter &writer) const
{
    const std::pair<const char *, qint32> shape[] = {
        {".context_length", 32768},
        {".embedding_length", m_width},
        {".block_count", m_layers},
        {".feed_forward_length", m_feedForward},
        {".attention.head_count", m_heads},
        {".attention.head_count_kv", m_keyHeads},
        {".rope.dimension_count", m_headWidth},
        {".vocab_size", m_tokens},
    };
    gguf_set_val_str(writer.file(), "general.architecture", m_architecture.constData());
    for (const auto &[name, value] : shape)
        gguf_set_val_u32(writer.file(), (m_architecture + name).constData(), static_cast<quint32>(value));
    gguf_set_val_f32(writer.file(), (m_architecture + ".attention.layer_norm_rms_epsilon").constData(),
                     1e-6F);
    gguf_set_val_f32(writer.file(), (m_architecture + ".rope.freq_base").constData(), m_rotationBase);
    gguf_set_val_str(writer.file(), "tokenizer.chat_template", m_chatTemplate.constData());
}

void ShapedModel::writeVocabulary(GgufWriter &writer) const
{
    QList<QByteArray> texts = {"<unk>"};
    std::vector<qint32> kinds = {Unknown};
    const auto add = [&](const QByteArray &text, TokenKind kind) {
        texts.append(text);
        kinds.push_back(kind);
    };
    for (const QByteArray &text : m_controlTokens)
        add(text, Control);
    for (int byte = 0; byte < 256; ++byte)
        add("<0x" + QByteArray::number(byte, 16).rightJustified(2, '0').toUpper() + '>', Byte);
    add("\xE2\x96\x81", Normal); // a blank in SPM vocabularies
    for (const QByteArray &word : m_words)
        add(word, UserDefined);
    // Filler tokens, never produced by tokenising a text, but sampled by a model with random weights.
    while (texts.size() < m_tokens)
        add('w' + QByteArray::number(texts.size()), Normal);

    gguf_context *const file = writer.file();
    gguf_set_val_str(file, "tokenizer.ggml.model", "llama");
    writer.setTokens(texts, kinds, std::vector<float>(kinds.size(), 0.0F));
    const auto end = static_cast<quint32>(texts.indexOf(m_endOfTurn));
    gguf_set_val_u32(file, "tokenizer.ggml.eos_token_id", end);
    gguf_set_val_bool(file, "tokenizer.ggml.add_space_prefix", false);
    gguf_set_val_bool(file, "tokenizer.ggml.add_bos_token", false);
}

void ShapedModel::writeLayer(GgufWriter &writer, quint64 &random, qint32 layer) const
{
    const QByteArray name = "blk." + QByteArray::number(layer) + '.';
    const qint32 queries = m_heads * m_headWidth;
    const qint32 keys = m_keyHeads * m_headWidth;
    const Precision precise = precision(layer);
    const auto matrix = [&](const char *part, Precision kind, qint32 columns, qint32 rows) {
        writeMatrix(writer, random, name + part + ".weight", kind, columns, rows);
    };
    writer.add((name + "attn_norm.weight").constData(), m_width, 1, 1);
    matrix("attn_q", Precision::Usual, m_width, queries);
    matrix("attn_k", Precision::Usual, m_width, keys);
    matrix("attn_v", precise, m_width, keys);
    matrix("attn_output", Precision::Usual, queries, m_width);
    if (m_hasBiases) {
        writer.add((name + "attn_q.bias").constData(), queries, 1, 0.1F);
        writer.add((name + "attn_k.bias").constData(), keys, 1, 0.1F);
        writer.add((name + "attn_v.bias").constData(), keys, 1, 0.1F);
    }
    writer.add((name + "ffn_norm.weight").constData(), m_width, 1, 1);
    matrix("ffn_gate", Precision::Usual, m_width, m_feedForward);
    matrix("ffn_up", Precision::Usual, m_width, m_feedForward);
    matrix("ffn_down", precise, m_feedForward, m_width);
}

void ShapedModel::writeMatrix(GgufWriter &writer, quint64 &random, const QByteArray &name,
                              Precision precision, qint32 columns, qint32 rows) const
{
    const bool isPrecise = precision == Precision::More;
    const ggml_type type = isPrecise ? GGML_TYPE_Q6_K : GGML_TYPE_Q4_K;
    const std::span<quint8> bytes = writer.addRaw(name.constData(), type, columns, rows);
    fillAtRandom(bytes, random);
    // Only the scales are fixed: they determine the weights' magnitude.
    for (size_t at = 0; at < bytes.size(); at += isPrecise ? q6Bytes : q4Bytes) {
        if (isPrecise) {
            setHalf(bytes, at + q6Bytes - sizeof(quint16), q6Scale);
        } else {
            setHalf(bytes, at, q4Scale);
            setHalf(bytes, at + sizeof(quint16), q4Offset);
        }
    }
}

// Q4_K_M: the first and last eighth of the layers, and every third one in between.
ShapedModel::Precision ShapedModel::precision(qint32 layer) const
{
    const qint32 eighth = m_layers / 8;
    const bool isPrecise = layer < eighth || layer >= 7 * m_layers / 8 || (layer - eighth) % 3 == 2;
    return isPrecise ? Precision::More : Precision::Usual;
}

size_t ShapedModel::byteCount() const
{
    const qint64 queries = m_heads * m_headWidth;
    const qint64 keys = m_keyHeads * m_headWidth;
    const qint64 layer = m_width * (2 * queries + 2 * keys + 3 * qint64(m_feedForward));
    const qint64 weights = m_layers * layer + qint64(m_tokens) * m_width;
    const size_t numbersAndNames = size_t(64) << 20;
    return static_cast<size_t>(weights) * q6Bytes / blockWeights + numbersAndNames;
}
