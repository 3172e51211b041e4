// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>
#include <vector>

class GgufWriter;

// Writes a real model file of a few hundred kilobytes with known replies: a one-layer Llama with hand-set
// weights. Its vocabulary holds the 256 bytes, so each ASCII character of a prompt is one token, plus the
// tokens that a test adds.
//
// The next token is a function of the last one (`follow`), unless a watched token is in the context
// (`watch`). By default the model ends its turn.
class TinyModel
{
public:
    enum class Kind { Normal = 1, Unknown = 2, Control = 3, UserDefined = 4, Byte = 6 };
    enum class Architecture { Llama, Embedding, Recurrent };
    enum class Vocabulary { SentencePiece, None };

    static constexpr qint32 endOfSequence = 2;

    TinyModel();

    // The token of one byte.
    static qint32 byteToken(char byte);

    // Adds a token of any bytes, valid UTF-8 or not, and returns its number.
    qint32 addToken(const QByteArray &text, Kind kind = Kind::Normal);

    // A logit high enough that sampling never picks another token.
    static constexpr float certain = 200;

    // `next` follows `token` with this logit. A token may have several successors.
    void follow(qint32 token, qint32 next, float score = certain);

    // The tokens generated after a line feed, which ends every prompt; each at most once. Then the model ends
    // its turn.
    void reply(const QList<qint32> &tokens);

    // While `token` is in the context, `answer` is always the next token.
    void watch(qint32 token, qint32 answer);

    void setChatTemplate(const QByteArray &text) { m_chatTemplate = text; }
    void setArchitecture(Architecture architecture) { m_architecture = architecture; }
    void setVocabulary(Vocabulary vocabulary) { m_vocabulary = vocabulary; }

    // Width of the single attention head; determines the KV cache size.
    void setHeadSize(qint32 size) { m_headSize = size; }

    // Writes the file; aborts on failure.
    void write(const QString &path) const;

private:
    void writeShape(GgufWriter &writer) const;
    void writeVocabulary(GgufWriter &writer) const;
    void writeAttention(GgufWriter &writer) const;
    void writeRecurrence(GgufWriter &writer) const;
    void writeTokenWeights(GgufWriter &writer) const;
    qint32 tokenCount() const { return static_cast<qint32>(m_tokens.size()); }
    qint32 embeddingSize() const;
    qint32 headSize() const;

    struct Token
    {
        QByteArray text;
        Kind kind;
    };
    std::vector<Token> m_tokens;
    struct Step
    {
        qint32 token;
        qint32 next;
        float score;
    };
    std::vector<Step> m_steps;
    std::pair<qint32, qint32> m_watched = {-1, -1};
    QByteArray m_chatTemplate;
    Architecture m_architecture = Architecture::Llama;
    Vocabulary m_vocabulary = Vocabulary::SentencePiece;
    qint32 m_headSize = 32;
};
