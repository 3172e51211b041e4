// SPDX-License-Identifier: Apache-2.0
#include "Inference/TinyModel.h"

#include <QFile>

#include <ggml.h>
#include <gguf.h>

#include <cmath>
#include <memory>

namespace {

constexpr qint32 firstByteToken = 3;
constexpr qint32 feedForwardSize = 32;

// How much louder a watched token is than the last one, however long the prompt.
constexpr float watchedGain = 1e5F;

// The score of the turn's end: above all that a test did not ask for, below all that it did.
constexpr float unlikely = 100;

struct GgufDeleter
{
    void operator()(gguf_context *context) const { gguf_free(context); }
};
struct GgmlDeleter
{
    void operator()(ggml_context *context) const { ggml_free(context); }
};

} // namespace

// The file's parts, which the library's own writer puts together.
class TinyModel::Writer
{
public:
    explicit Writer(size_t bytes) : m_file(gguf_init_empty()), m_tensors(ggml_init({bytes, nullptr, false}))
    {
        if (!m_file || !m_tensors)
            qFatal("No memory for a model file");
    }

    gguf_context *file() const { return m_file.get(); }

    // A tensor of `rows` rows of `columns` numbers, all of them `value`; gives its numbers.
    float *add(const char *name, qint32 columns, qint32 rows, float value = 0)
    {
        ggml_tensor *const tensor = rows == 1
                                        ? ggml_new_tensor_1d(m_tensors.get(), GGML_TYPE_F32, columns)
                                        : ggml_new_tensor_2d(m_tensors.get(), GGML_TYPE_F32, columns, rows);
        ggml_set_name(tensor, name);
        auto *const numbers = static_cast<float *>(tensor->data);
        std::fill_n(numbers, ggml_nelements(tensor), value);
        gguf_add_tensor(m_file.get(), tensor);
        return numbers;
    }

    void write(const QString &path) const
    {
        const bool metadataOnly = false;
        if (!gguf_write_to_file(m_file.get(), QFile::encodeName(path).constData(), metadataOnly))
            qFatal("The model file could not be written");
    }

private:
    std::unique_ptr<gguf_context, GgufDeleter> m_file;
    std::unique_ptr<ggml_context, GgmlDeleter> m_tensors;
};

TinyModel::TinyModel()
{
    addToken("<unk>", Kind::Unknown);
    addToken("<s>", Kind::Control);
    addToken("</s>", Kind::Control);
    for (int byte = 0; byte < 256; ++byte)
        addToken("<0x" + QByteArray::number(byte, 16).rightJustified(2, '0').toUpper() + '>', Kind::Byte);
    addToken("\xE2\x96\x81"); // how this kind of vocabulary spells a blank
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
        size * (2 * m_tokens.size() + 4 * static_cast<size_t>(headSize()) + 4 * feedForwardSize);
    Writer writer(numbers * sizeof(float) + (size_t(1) << 20));
    writeShape(writer);
    writeVocabulary(writer);
    writeAttention(writer);
    writeTokenWeights(writer);
    writer.write(path);
}

// One dimension a token, and at least one more that says whether the watched one was seen.
qint32 TinyModel::embeddingSize() const
{
    return (tokenCount() / 32 + 1) * 32;
}

// The models that only embed text want it so.
qint32 TinyModel::headSize() const
{
    return m_architecture == Architecture::Embedding ? embeddingSize() : m_headSize;
}

void TinyModel::writeShape(Writer &writer) const
{
    const QByteArray architecture = m_architecture == Architecture::Llama ? "llama" : "eurobert";
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
    };
    gguf_set_val_str(writer.file(), "general.architecture", architecture.constData());
    for (const auto &[name, value] : shape)
        gguf_set_val_u32(writer.file(), (architecture + name).constData(), static_cast<quint32>(value));
    gguf_set_val_f32(writer.file(), (architecture + ".attention.layer_norm_rms_epsilon").constData(), 1e-5F);
    if (!m_chatTemplate.isEmpty())
        gguf_set_val_str(writer.file(), "tokenizer.chat_template", m_chatTemplate.constData());
}

void TinyModel::writeVocabulary(Writer &writer) const
{
    gguf_context *const file = writer.file();
    if (m_vocabulary == Vocabulary::None)
        return gguf_set_val_str(file, "tokenizer.ggml.model", "none");

    std::vector<const char *> texts;
    std::vector<qint32> kinds;
    for (const Token &token : m_tokens) {
        texts.push_back(token.text.constData());
        kinds.push_back(static_cast<qint32>(token.kind));
    }
    const std::vector<float> scores(m_tokens.size(), 0.0F);
    gguf_set_val_str(file, "tokenizer.ggml.model", "llama");
    gguf_set_arr_str(file, "tokenizer.ggml.tokens", texts.data(), texts.size());
    gguf_set_arr_data(file, "tokenizer.ggml.token_type", GGUF_TYPE_INT32, kinds.data(), kinds.size());
    gguf_set_arr_data(file, "tokenizer.ggml.scores", GGUF_TYPE_FLOAT32, scores.data(), scores.size());
    gguf_set_val_u32(file, "tokenizer.ggml.eos_token_id", endOfSequence);
    gguf_set_val_bool(file, "tokenizer.ggml.add_space_prefix", false);
    gguf_set_val_bool(file, "tokenizer.ggml.add_bos_token", false);
}

// Queries and keys of nought attend to every token alike, so the attention gives the share of watched ones.
// The feed-forward part adds nothing.
void TinyModel::writeAttention(Writer &writer) const
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

// Every token has a dimension of its own, from which the next token's score is read.
void TinyModel::writeTokenWeights(Writer &writer) const
{
    const qint32 size = embeddingSize();
    float *const embedding = writer.add("token_embd.weight", size, tokenCount());
    writer.add("output_norm.weight", size, 1, 1);
    for (qint32 token = 0; token < tokenCount(); ++token)
        embedding[qint64(token) * size + token] = 1;
    if (m_architecture == Architecture::Embedding)
        return;

    float *const scores = writer.add("output.weight", size, tokenCount());
    // What the norm before it makes of a 1 that stands alone.
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
