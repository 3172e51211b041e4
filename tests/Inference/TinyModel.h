// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <utility>
#include <vector>

class GgufWriter;

// Makes a real model file of a few hundred kilobytes whose replies are known: a Llama of one layer whose
// weights are set by hand. Its vocabulary holds the 256 bytes, so that every ASCII character of a prompt is
// one token, and what a test adds.
//
// The next token is a function of the last one (`follow`), unless a watched token stands anywhere in what the
// model sees (`watch`); with nothing set the model ends its turn.
class TinyModel
{
public:
    enum class Kind { Normal = 1, Unknown = 2, Control = 3, UserDefined = 4, Byte = 6 };
    enum class Architecture { Llama, Embedding, Recurrent };
    enum class Vocabulary { SentencePiece, None };

    static constexpr qint32 endOfSequence = 2;

    TinyModel();

    // The token that stands for one byte of text.
    static qint32 byteToken(char byte);

    // Adds a token of any bytes, valid UTF-8 or not, and gives its number.
    qint32 addToken(const QByteArray &text, Kind kind = Kind::Normal);

    // Certain enough that no draw gives another token.
    static constexpr float certain = 200;

    // After `token` comes `next`, with this score. Several may follow the same token.
    void follow(qint32 token, qint32 next, float score = certain);

    // The tokens that the model says after a line feed, the end of every prompt's opening; a token may stand
    // in it only once. The model ends its turn after the last one.
    void reply(const QList<qint32> &tokens);

    // While `token` stands in the context, `answer` is the next token, whatever the last one is.
    void watch(qint32 token, qint32 answer);

    void setChatTemplate(const QByteArray &text) { m_chatTemplate = text; }
    void setArchitecture(Architecture architecture) { m_architecture = architecture; }
    void setVocabulary(Vocabulary vocabulary) { m_vocabulary = vocabulary; }

    // The width of the attention's one head. What the context needs in memory grows with it.
    void setHeadSize(qint32 size) { m_headSize = size; }

    // Writes the file; ends the process if it cannot.
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
