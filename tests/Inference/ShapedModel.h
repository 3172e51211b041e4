// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class GgufWriter;

// Writes model files with the shapes and quantisation mix (Q4_K_M) of the catalog's models and random
// weights: speed depends on the shapes only. Deterministic for a given seed.
//
// The vocabulary has about the granularity of a real one: words and punctuation runs of the given texts;
// everything else is split into bytes.
class ShapedModel
{
public:
    // The shapes of the catalog's models.
    static ShapedModel qwen2_1_5b();
    static ShapedModel llama3_2_3b();

    // A smaller model for tests: fewer layers and tokens.
    ShapedModel cut(qint32 layers, qint32 tokens) const;

    // Texts whose words become tokens.
    void setTexts(const QList<QString> &texts);

    // Aborts on failure. Needs memory for the whole file.
    void write(const QString &path, quint64 seed = 1) const;

private:
    ShapedModel() = default;

    enum class Precision { Usual, More };

    void writeMetadata(GgufWriter &writer) const;
    void writeVocabulary(GgufWriter &writer) const;
    void writeLayer(GgufWriter &writer, quint64 &random, qint32 layer) const;
    void writeMatrix(GgufWriter &writer, quint64 &random, const QByteArray &name, Precision precision,
                     qint32 columns, qint32 rows) const;
    // Whether the layer's value and output matrices have higher precision.
    Precision precision(qint32 layer) const;
    size_t byteCount() const;

    QByteArray m_architecture;
    QByteArray m_chatTemplate;
    QList<QByteArray> m_controlTokens;
    QByteArray m_endOfTurn;
    bool m_hasBiases = false;
    bool m_hasRotationFactors = false;
    float m_rotationBase = 0;
    qint32 m_layers = 0;
    qint32 m_width = 0;
    qint32 m_heads = 0;
    qint32 m_keyHeads = 0;
    qint32 m_headWidth = 128;
    qint32 m_feedForward = 0;
    qint32 m_tokens = 0;
    QList<QByteArray> m_words;
};
