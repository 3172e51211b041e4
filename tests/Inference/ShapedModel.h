// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class GgufWriter;

// Writes model files with the shapes and the mix of quantisations (Q4_K_M) of the models in the catalog, and
// random weights: how fast a model is depends on its shapes, not on what it has learnt. The same seed gives
// the same file.
//
// Its vocabulary splits texts as coarsely as those models' vocabularies do: it knows the words and runs of
// signs of the given texts, and spells everything else in bytes.
class ShapedModel
{
public:
    // The catalog's models by the names of their architectures' shapes.
    static ShapedModel qwen2_1_5b();
    static ShapedModel llama3_2_3b();

    // A part of the model that is enough to compare results, for tests: fewer layers and tokens.
    ShapedModel cut(qint32 layers, qint32 tokens) const;

    // Whose words become tokens.
    void setTexts(const QList<QString> &texts);

    // Ends the process if it cannot. Needs as much memory as the file is long.
    void write(const QString &path, quint64 seed = 1) const;

private:
    ShapedModel() = default;

    enum class Precision { Usual, More };

    void writeMetadata(GgufWriter &writer) const;
    void writeVocabulary(GgufWriter &writer) const;
    void writeLayer(GgufWriter &writer, quint64 &random, qint32 layer) const;
    void writeMatrix(GgufWriter &writer, quint64 &random, const QByteArray &name, Precision precision,
                     qint32 columns, qint32 rows) const;
    // Whether this layer is among those whose values and outputs are kept more precisely.
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
