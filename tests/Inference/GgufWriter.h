// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <ggml.h>
#include <gguf.h>

#include <memory>
#include <span>

// Puts a model file together from metadata and tensors, through the library's own writer. Ends the process
// when there is no memory for it or the file cannot be written.
class GgufWriter
{
public:
    // `bytes` is room enough for all tensors' numbers.
    explicit GgufWriter(size_t bytes);

    // For the metadata.
    gguf_context *file() const { return m_file.get(); }

    // What vocabularies of every kind of token have in common.
    void setTokens(std::span<const QByteArray> texts, std::span<const qint32> kinds,
                   std::span<const float> scores);

    // A tensor of `rows` rows of `columns` numbers, all of them `value`; gives its numbers.
    float *add(const char *name, qint32 columns, qint32 rows, float value = 0);

    // A tensor in any of the library's formats; gives its bytes, which are not set.
    std::span<quint8> addRaw(const char *name, ggml_type type, qint64 columns, qint64 rows);

    void write(const QString &path) const;

private:
    struct GgufDeleter
    {
        void operator()(gguf_context *context) const { gguf_free(context); }
    };
    struct GgmlDeleter
    {
        void operator()(ggml_context *context) const { ggml_free(context); }
    };

    std::unique_ptr<gguf_context, GgufDeleter> m_file;
    std::unique_ptr<ggml_context, GgmlDeleter> m_tensors;
};
