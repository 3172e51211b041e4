// SPDX-License-Identifier: Apache-2.0
#include "Agent/SystemPrompt.h"
#include "Inference/Llama/EngineFixture.h"
#include "Inference/Llama/LlamaHandles.h"

#include <QMap>
#include <QTest>

#include <llama.h>

#include <algorithm>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr int bytesOfAPiece = 64; // the engine drops longer tokens

QString modelPath()
{
    return QStringLiteral(ORVANE_PRACTICE_MODEL);
}

// Tokens too long for the engine's buffer, as text.
QStringList unsayable(const llama_vocab *vocab)
{
    QStringList found;
    std::vector<char> piece(4096);
    for (llama_token token = 0; token < llama_vocab_n_tokens(vocab); ++token) {
        const int length =
            llama_token_to_piece(vocab, token, piece.data(), int(piece.size()), 0, /*special=*/false);
        if (length < 0 || length > bytesOfAPiece)
            found.append(QString::fromUtf8(llama_vocab_get_text(vocab, token)));
    }
    return found;
}

} // namespace

// The shipped practice model: its replies pass through the engine complete.
class PracticeModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_engine.emplace();
        Awaited::result(m_engine->engine().load(modelPath()));
    }
    void cleanupTestCase() { m_engine.reset(); }

    void everyTokenFitsIntoAPiece()
    {
        llama_model_params parameters = llama_model_default_params();
        parameters.vocab_only = true;
        const LlamaModel model(
            llama_model_load_from_file(QFile::encodeName(modelPath()).constData(), parameters));
        QVERIFY(model);
        QCOMPARE(unsayable(llama_model_get_vocab(model.get())).join(u'\n'), QString());
    }

    // An impossible request, answered by a sentence longer than the engine's buffer.
    void aLongSentenceIsSaidWhole()
    {
        QCOMPARE(usualReply(u"What's the weather in Oslo?"_s),
                 u"{\"action\":\"done\",\"message\":\"Sorry, I can't do that. I can open apps and websites, "
                 "search the web, and manage windows, files and folders.\"}"_s);
    }

    void namesAndTextsOfAnyScriptAreCopied_data()
    {
        QTest::addColumn<QString>("task");
        QTest::addColumn<QString>("reply");
        QTest::newRow("several scripts") << u"type Größe 漢字 👍🏽"_s
                                         << uR"({"action":"type_text","text":"Größe 漢字 👍🏽"})"_s;
        QTest::newRow("accents") << u"Type naïve café"_s
                                 << uR"({"action":"type_text","text":"naïve café"})"_s;
        QTest::newRow("a folder")
            << u"Create a folder called Überweisungen in Documents"_s
            << uR"({"action":"create_folder","name":"Überweisungen","in":"Documents"})"_s;
        QTest::newRow("Cyrillic") << u"Search for Привет мир"_s
                                  << uR"({"action":"web_search","query":"Привет мир"})"_s;
        QTest::newRow("Japanese") << u"Type 日本語の文章"_s
                                  << uR"({"action":"type_text","text":"日本語の文章"})"_s;
    }

    void namesAndTextsOfAnyScriptAreCopied()
    {
        QFETCH(QString, task);
        QTEST(usualReply(task), "reply");
    }

    void aTextTooLongToCopyIsNotTyped()
    {
        const QString text =
            u"北京市朝阳区的天气预报说明天会下雨请带好雨伞出门并且注意路上的交通安全谢谢大家的配合"_s;
        QCOMPARE(
            usualReply(u"Type "_s + text),
            u"{\"action\":\"done\",\"message\":\"Sorry, I can't copy a text like that without mistakes.\"}"_s);
    }

private:
    // The most frequent of five replies, since sampling is random.
    QString usualReply(const QString &task)
    {
        const QList<ChatMessage> conversation = {
            {ChatMessage::Role::System, SystemPrompt::text()},
            {ChatMessage::Role::User,
             u"User: %1\nState: Frontmost app: Mousepad. Windows: Mousepad — Untitled 1"_s.arg(task)}};
        const auto ignored = [](const QString &) {};
        QMap<QString, int> counts;
        for (int attempt = 0; attempt < 5; ++attempt)
            ++counts[Awaited::result(m_engine->engine().generate(conversation, 200, ignored))];
        return std::max_element(counts.keyValueBegin(), counts.keyValueEnd(),
                                [](const auto &one, const auto &other) { return one.second < other.second; })
            ->first;
    }

    std::optional<EngineFixture> m_engine;
};

QTEST_GUILESS_MAIN(PracticeModelTest)
#include "PracticeModelTest.moc"
