// SPDX-License-Identifier: Apache-2.0
// Prompt reuse and evaluation ahead do not change the engine's observable behaviour.
#include "Inference/Llama/EngineFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int promptTokens = 1000;

// Replies "n", or nothing if the prompt contains an "X".
TinyModel modelWatchingX()
{
    TinyModel model;
    model.reply({TinyModel::byteToken('n')});
    model.watch(TinyModel::byteToken('X'), TinyModel::endOfSequence);
    return model;
}

QString letters(int count, int watchedAt = -1)
{
    QString content(count, u'a');
    if (watchedAt >= 0)
        content[watchedAt] = u'X';
    return content;
}

QList<ChatMessage> systemSays(const QString &content)
{
    return {{ChatMessage::Role::System, content}};
}

QString reply(EngineFixture &fixture, const QList<ChatMessage> &messages)
{
    return Awaited::result(fixture.engine().generate(messages, 8, fixture.collect()));
}

} // namespace

class LlamaEngineReuseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPromptIsAnsweredByItself_data()
    {
        QTest::addColumn<QList<int>>("watchedAt"); // one per prompt; -1: none
        QTest::newRow("the end differs") << QList<int>{-1, 990, -1, 990, 989};
        QTest::newRow("the middle differs") << QList<int>{500, -1, 510, -1, -1};
        QTest::newRow("the start differs") << QList<int>{-1, 0, -1, 0, -1};
        QTest::newRow("later and later") << QList<int>{100, 300, 600, 900, -1};
        QTest::newRow("earlier and earlier") << QList<int>{900, 600, 300, 100, -1};
    }

    void everyPromptIsAnsweredByItself()
    {
        QFETCH(QList<int>, watchedAt);
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        for (const int place : watchedAt)
            QCOMPARE(fixture.reply(8, letters(promptTokens, place)), place < 0 ? u"n"_s : QString());
    }

    void aShorterPromptAfterALongOneIsAnsweredByItself()
    {
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        QCOMPARE(fixture.reply(8, letters(promptTokens, 700)), QString());
        QCOMPARE(fixture.reply(8, letters(600)), u"n"_s);
        QCOMPARE(fixture.reply(8, letters(5)), u"n"_s);
        QCOMPARE(fixture.reply(8, letters(promptTokens, 700)), QString());
    }

    void aTaskRightAfterTheLoadIsAnsweredByItself()
    {
        const QList<ChatMessage> beginning = systemSays(letters(promptTokens));
        EngineFixture fixture(beginning);
        fixture.load(modelWatchingX()); // evaluation ahead has just begun
        QCOMPARE(reply(fixture, beginning + EngineFixture::userSays(u"b"_s)), u"n"_s);
        QCOMPARE(reply(fixture, beginning + EngineFixture::userSays(u"X"_s)), QString());
    }

    void anotherBeginningDoesNotSeeTheExpectedOne()
    {
        EngineFixture fixture(systemSays(letters(promptTokens, 300)));
        fixture.load(modelWatchingX());
        QTest::qWait(50); // whether or not it has finished
        QCOMPARE(reply(fixture, EngineFixture::userSays(letters(promptTokens))), u"n"_s);
        QCOMPARE(reply(fixture, systemSays(letters(promptTokens, 300)) + EngineFixture::userSays(u"b"_s)),
                 QString());
    }

    void anotherModelMayBeLoadedDuringEvaluationAhead()
    {
        EngineFixture fixture(systemSays(letters(promptTokens)));
        fixture.load(modelWatchingX());
        TinyModel other;
        other.reply({TinyModel::byteToken('o')});
        fixture.load(other);
        QCOMPARE(reply(fixture, EngineFixture::userSays(letters(promptTokens, 10))), u"o"_s);
    }

    void evaluationAheadEndsWithAnUnload()
    {
        EngineFixture fixture(systemSays(letters(promptTokens)));
        fixture.load(modelWatchingX());
        fixture.engine().unload();
        QCOMPARE(EngineFixture::failureOf([&] { fixture.reply(8); }), InferenceError::Code::NotLoaded);
        QVERIFY(!fixture.engine().isLoaded());
    }

    // Destroys the engine at various moments.
    void theEngineMayBeDestroyedAtAnyTime_data()
    {
        QTest::addColumn<int>("wait"); // ms
        for (const int wait : {0, 1, 3, 10, 30})
            QTest::addRow("after %d ms", wait) << wait;
    }

    void theEngineMayBeDestroyedAtAnyTime()
    {
        QFETCH(int, wait);
        const QList<ChatMessage> beginning = systemSays(letters(3000));
        std::optional<QCoro::Task<QString>> reply;
        {
            EngineFixture fixture(beginning);
            fixture.load(modelWatchingX());
            reply =
                fixture.engine().generate(beginning + EngineFixture::userSays(u"b"_s), 8, fixture.collect());
            QThread::msleep(static_cast<unsigned long>(wait));
        }
        QCoreApplication::processEvents();
    }

    void aBeginningThatCannotBeEvaluatedIsNoFailure()
    {
        TinyModel model; // has no KV cache
        model.setArchitecture(TinyModel::Architecture::Embedding);
        EngineFixture fixture(systemSays(letters(promptTokens)));
        fixture.load(model);
        QVERIFY(fixture.engine().isLoaded());
        QCOMPARE(EngineFixture::failureOf([&] { fixture.reply(1); }), InferenceError::Code::DecodeFailed);
    }

    void aModelThatCannotTruncateAPromptIsEvaluatedInFull()
    {
        TinyModel model;
        model.setArchitecture(TinyModel::Architecture::Recurrent);
        model.reply({TinyModel::byteToken('n')});
        const QList<ChatMessage> beginning = systemSays(letters(promptTokens));
        EngineFixture fixture(beginning);
        fixture.load(model);
        for (int step = 0; step < 3; ++step)
            QCOMPARE(reply(fixture, beginning + EngineFixture::userSays(letters(step * 200))), u"n"_s);
    }
};

QTEST_GUILESS_MAIN(LlamaEngineReuseTest)
#include "LlamaEngineReuseTest.moc"
