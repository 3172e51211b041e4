// SPDX-License-Identifier: Apache-2.0
#include "Inference/GgufWriter.h"

#include <QFile>

#include <algorithm>
#include <vector>

GgufWriter::GgufWriter(size_t bytes)
    : m_file(gguf_init_empty()), m_tensors(ggml_init({bytes, nullptr, false}))
{
    if (!m_file || !m_tensors)
        qFatal("No memory for a model file");
}

void GgufWriter::setTokens(std::span<const QByteArray> texts, std::span<const qint32> kinds,
                           std::span<const float> scores)
{
    std::vector<const char *> pointers;
    for (const QByteArray &text : texts)
        pointers.push_back(text.constData());
    gguf_set_arr_str(file(), "tokenizer.ggml.tokens", pointers.data(), pointers.size());
    gguf_set_arr_data(file(), "tokenizer.ggml.token_type", GGUF_TYPE_INT32, kinds.data(), kinds.size());
    gguf_set_arr_data(file(), "tokenizer.ggml.scores", GGUF_TYPE_FLOAT32, scores.data(), scores.size());
}

float *GgufWriter::add(const char *name, qint32 columns, qint32 rows, float value)
{
    ggml_tensor *const tensor = rows == 1 ? ggml_new_tensor_1d(m_tensors.get(), GGML_TYPE_F32, columns)
                                          : ggml_new_tensor_2d(m_tensors.get(), GGML_TYPE_F32, columns, rows);
    ggml_set_name(tensor, name);
    auto *const numbers = static_cast<float *>(tensor->data);
    std::fill_n(numbers, ggml_nelements(tensor), value);
    gguf_add_tensor(m_file.get(), tensor);
    return numbers;
}

std::span<quint8> GgufWriter::addRaw(const char *name, ggml_type type, qint64 columns, qint64 rows)
{
    ggml_tensor *const tensor = ggml_new_tensor_2d(m_tensors.get(), type, columns, rows);
    ggml_set_name(tensor, name);
    gguf_add_tensor(m_file.get(), tensor);
    return {static_cast<quint8 *>(tensor->data), ggml_nbytes(tensor)};
}

void GgufWriter::write(const QString &path) const
{
    const bool metadataOnly = false;
    if (!gguf_write_to_file(m_file.get(), QFile::encodeName(path).constData(), metadataOnly))
        qFatal("The model file could not be written");
}
