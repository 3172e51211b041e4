// SPDX-License-Identifier: Apache-2.0
#include "Inference/TinyModel.h"

#include "Inference/GgufWriter.h"

#include <QHash>

#include <cmath>

namespace {

constexpr qint32 firstByteToken = 3;
constexpr qint32 feedForwardSize = 32;

// For the recurrent kind.
constexpr qint32 convolutionSize = 4;
constexpr qint32 stateSize = 16;
constexpr qint32 timeStepRank = 8;

// Weight of a watched token relative to the last one; enough for any prompt length.
constexpr float watchedGain = 1e5F;

// Logit of the end of turn: above tokens not asked for, below those asked for.
constexpr float unlikely = 100;

} // namespace

TinyModel::TinyModel()
{
    addToken("<unk>", Kind::Unknown);
    addToken("<s>", Kind::Control);
    addToken("</s>", Kind::Control);
    for (int byte = 0; byte < 256; ++byte)
        addToken("<0x" + QByteArray::number(byte, 16).rightJustified(2, '0').toUpper() + '>', Kind::Byte);
    addToken("\xE2\x96\x81"); // a blank in SPM vocabularies
}

qint32 TinyModel::byteToken(char byte)
{
    return firstByteToken + static_cast<unsigned char>(byte);
}

qint32 TinyModel::addToken(const QByteArray &text, Kind kind)
{
    m_tokens.push_back({text, kind});
    return static_cast<qint32>(m_tokens.size()) - 1;
}

void TinyModel::follow(qint32 token, qint32 next, float score)
{
    m_steps.push_back({token, next, score});
}

void TinyModel::reply(const QList<qint32> &tokens)
{
    qint32 last = byteToken('\n');
    for (const qint32 token : tokens) {
        follow(last, token);
        last = token;
    }
}

void TinyModel::watch(qint32 token, qint32 answer)
{
    m_watched = {token, answer};
}

void TinyModel::write(const QString &path) const
{
    const size_t size = static_cast<size_t>(embeddingSize());
    const size_t numbers =
        size * (2 * m_tokens.size() + 4 * static_cast<size_t>(headSize()) + 4 * feedForwardSize +
                (m_architecture == Architecture::Recurrent ? 8 * size : 0));
    GgufWriter writer(numbers * sizeof(float) + (size_t(1) << 20));
    writeShape(writer);
    writeVocabulary(writer);
    if (m_architecture == Architecture::Recurrent)
        writeRecurrence(writer);
    else
        writeAttention(writer);
    writeTokenWeights(writer);
    writer.write(path);
}

// One dimension per token, and at least one that marks the watched token.
qint32 TinyModel::embeddingSize() const
{
    return (tokenCount() / 32 + 1) * 32;
}

// Required by embedding models.
qint32 TinyModel::headSize() const
{
    return m_architecture == Architecture::Embedding ? embeddingSize() : m_headSize;
}

void TinyModel::writeShape(GgufWriter &writer) const
{
    static const QHash<Architecture, QByteArray> names = {{Architecture::Llama, "llama"},
                                                          {Architecture::Embedding, "eurobert"},
                                                          {Architecture::Recurrent, "mamba"}};
    const QByteArray architecture = names[m_architecture];
    const std::pair<const char *, qint32> shape[] = {
        {".context_length", 8192},
        {".embedding_length", embeddingSize()},
        {".block_count", 1},
        {".feed_forward_length", feedForwardSize},
        {".attention.head_count", 1},
        {".attention.head_count_kv", 1},
        {".attention.key_length", headSize()},
        {".attention.value_length", headSize()},
        {".rope.dimension_count", headSize()},
        {".vocab_size", tokenCount()},
        {".ssm.conv_kernel", convolutionSize},
        {".ssm.inner_size", 2 * embeddingSize()},
        {".ssm.state_size", stateSize},
        {".ssm.time_step_rank", timeStepRank},
    };
    gguf_set_val_str(writer.file(), "general.architecture", architecture.constData());
    for (const auto &[name, value] : shape)
        gguf_set_val_u32(writer.file(), (architecture + name).constData(), static_cast<quint32>(value));
    gguf_set_val_f32(writer.file(), (architecture + ".attention.layer_norm_rms_epsilon").constData(), 1e-5F);
    if (!m_chatTemplate.isEmpty())
        gguf_set_val_str(writer.file(), "tokenizer.chat_template", m_chatTemplate.constData());
}

void TinyModel::writeVocabulary(GgufWriter &writer) const
{
    gguf_context *const file = writer.file();
    if (m_vocabulary == Vocabulary::None)
        return gguf_set_val_str(file, "tokenizer.ggml.model", "none");

    std::vector<QByteArray> texts;
    std::vector<qint32> kinds;
    for (const Token &token : m_tokens) {
        texts.push_back(token.text);
        kinds.push_back(static_cast<qint32>(token.kind));
    }
    gguf_set_val_str(file, "tokenizer.ggml.model", "llama");
    writer.setTokens(texts, kinds, std::vector<float>(texts.size(), 0.0F));
    gguf_set_val_u32(file, "tokenizer.ggml.eos_token_id", endOfSequence);
    gguf_set_val_bool(file, "tokenizer.ggml.add_space_prefix", false);
    gguf_set_val_bool(file, "tokenizer.ggml.add_bos_token", false);
}

// Zero queries and keys attend to all tokens equally, so attention yields the share of watched tokens. The
// feed-forward part adds nothing.
void TinyModel::writeAttention(GgufWriter &writer) const
{
    const qint32 size = embeddingSize();
    writer.add("blk.0.attn_norm.weight", size, 1, 1);
    writer.add("blk.0.attn_q.weight", size, headSize());
    writer.add("blk.0.attn_k.weight", size, headSize());
    float *const values = writer.add("blk.0.attn_v.weight", size, headSize());
    float *const outputs = writer.add("blk.0.attn_output.weight", headSize(), size);
    if (m_watched.first >= 0) {
        values[m_watched.first] = 1 / std::sqrt(static_cast<float>(size));
        outputs[qint64(size - 1) * headSize()] = watchedGain;
    }
    writer.add("blk.0.ffn_norm.weight", size, 1, 1);
    writer.add("blk.0.ffn_gate.weight", size, feedForwardSize);
    writer.add("blk.0.ffn_up.weight", size, feedForwardSize);
    writer.add("blk.0.ffn_down.weight", feedForwardSize, size);
}

// Contributes nothing.
void TinyModel::writeRecurrence(GgufWriter &writer) const
{
    const qint32 size = embeddingSize();
    const qint32 inner = 2 * size;
    writer.add("blk.0.attn_norm.weight", size, 1, 1);
    writer.add("blk.0.ssm_in.weight", size, 2 * inner);
    writer.add("blk.0.ssm_conv1d.weight", convolutionSize, inner);
    writer.add("blk.0.ssm_conv1d.bias", inner, 1);
    writer.add("blk.0.ssm_x.weight", inner, timeStepRank + 2 * stateSize);
    writer.add("blk.0.ssm_dt.weight", timeStepRank, inner);
    writer.add("blk.0.ssm_dt.bias", inner, 1);
    writer.add("blk.0.ssm_a", stateSize, inner);
    writer.add("blk.0.ssm_d", inner, 1);
    writer.add("blk.0.ssm_out.weight", inner, size);
}

// Each token has its own dimension, from which the next token's logit is read.
void TinyModel::writeTokenWeights(GgufWriter &writer) const
{
    const qint32 size = embeddingSize();
    float *const embedding = writer.add("token_embd.weight", size, tokenCount());
    writer.add("output_norm.weight", size, 1, 1);
    for (qint32 token = 0; token < tokenCount(); ++token)
        embedding[qint64(token) * size + token] = 1;
    if (m_architecture == Architecture::Embedding)
        return;

    float *const scores = writer.add("output.weight", size, tokenCount());
    // What the preceding norm makes of a one-hot 1.
    const float loudness = std::sqrt(static_cast<float>(size));
    const auto setScore = [&](qint32 dimension, qint32 next, float score) {
        scores[qint64(next) * size + dimension] = score / loudness;
    };
    for (qint32 token = 0; token < tokenCount(); ++token)
        setScore(token, endOfSequence, unlikely);
    for (const Step &step : m_steps)
        setScore(step.token, step.next, step.score);
    if (m_watched.first >= 0)
        setScore(size - 1, m_watched.second, certain);
}
