// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <ggml.h>
#include <gguf.h>

#include <memory>
#include <span>

// Builds a model file from metadata and tensors with the library's writer. Aborts if memory runs out or the
// file cannot be written.
class GgufWriter
{
public:
    // `bytes` must hold the data of all tensors.
    explicit GgufWriter(size_t bytes);

    // For setting metadata.
    gguf_context *file() const { return m_file.get(); }

    // Sets the metadata common to all vocabulary types.
    void setTokens(std::span<const QByteArray> texts, std::span<const qint32> kinds,
                   std::span<const float> scores);

    // Adds a tensor of `rows` x `columns` floats, all `value`; returns its data.
    float *add(const char *name, qint32 columns, qint32 rows, float value = 0);

    // Adds a tensor of any type; returns its uninitialised data.
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
