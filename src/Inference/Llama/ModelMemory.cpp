// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/ModelMemory.h"

#include "Inference/Llama/LlamaPromptCache.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <gguf.h>

#include <algorithm>
#include <memory>

namespace {

using Metadata = std::unique_ptr<gguf_context, void (*)(gguf_context *)>;

constexpr qint64 bytesPerCachedNumber = 2; // half precision
constexpr qint64 bytesPerNumber = 4;

// The program's own memory and what libraries take beside the model.
constexpr qint64 reserve = 100'000'000;

qint64 number(const gguf_context *metadata, const QByteArray &key)
{
    const int64_t index = gguf_find_key(metadata, key.constData());
    const bool isThere = index >= 0 && gguf_get_kv_type(metadata, index) == GGUF_TYPE_UINT32;
    return isThere ? gguf_get_val_u32(metadata, index) : 0;
}

QByteArray architecture(const gguf_context *metadata)
{
    const int64_t index = gguf_find_key(metadata, "general.architecture");
    const bool isThere = index >= 0 && gguf_get_kv_type(metadata, index) == GGUF_TYPE_STRING;
    return isThere ? QByteArray(gguf_get_val_str(metadata, index)) : QByteArray();
}

qint64 vocabularySize(const gguf_context *metadata)
{
    const int64_t index = gguf_find_key(metadata, "tokenizer.ggml.tokens");
    const bool isThere = index >= 0 && gguf_get_kv_type(metadata, index) == GGUF_TYPE_ARRAY;
    return isThere ? static_cast<qint64>(gguf_get_arr_n(metadata, index)) : 0;
}

// Keys and values of all layers, for one token.
qint64 cachedBytesPerToken(const gguf_context *metadata)
{
    const QByteArray prefix = architecture(metadata) + '.';
    const qint64 layers = number(metadata, prefix + "block_count");
    const qint64 width = number(metadata, prefix + "embedding_length");
    const qint64 heads = std::max<qint64>(1, number(metadata, prefix + "attention.head_count"));
    const qint64 grouped = number(metadata, prefix + "attention.head_count_kv");
    const qint64 cachedHeads = grouped > 0 ? std::min(grouped, heads) : heads;
    return 2 * bytesPerCachedNumber * layers * (width * cachedHeads / heads);
}

} // namespace

qint64 ModelMemory::needed(const QString &path, quint32 context, quint32 batch)
{
    const qint64 weights = QFileInfo(path).size();
    const gguf_init_params withoutWeights{.no_alloc = true, .ctx = nullptr};
    const Metadata metadata(gguf_init_from_file(QFile::encodeName(path).constData(), withoutWeights),
                            &gguf_free);
    if (!metadata)
        return weights;
    const qint64 contextBytes = cachedBytesPerToken(metadata.get()) * context;
    const qint64 copiedBytes = std::min<qint64>(contextBytes, LlamaPromptCache::mostKeptBytes);
    // The largest buffer holds a number for each token of the vocabulary.
    const qint64 computing = bytesPerNumber * batch * vocabularySize(metadata.get());
    return weights + contextBytes + copiedBytes + computing + reserve;
}
