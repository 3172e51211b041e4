// SPDX-License-Identifier: Apache-2.0
// What the engine knows of earlier prompts, and evaluates ahead of need, is not to be seen from outside.
#include "Inference/Llama/EngineFixture.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int promptTokens = 1000;

// Says "n", but nothing when it sees an "X".
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
        QTest::addColumn<QList<int>>("watchedAt"); // one prompt after the other; -1: nowhere
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

    void aTaskThatComesAtOnceIsAnsweredByItself()
    {
        const QList<ChatMessage> beginning = systemSays(letters(promptTokens));
        EngineFixture fixture(beginning);
        fixture.load(modelWatchingX()); // the evaluation ahead has just begun
        QCOMPARE(reply(fixture, beginning + EngineFixture::userSays(u"b"_s)), u"n"_s);
        QCOMPARE(reply(fixture, beginning + EngineFixture::userSays(u"X"_s)), QString());
    }

    void aConversationThatBeginsOtherwiseDoesNotSeeTheExpectedBeginning()
    {
        EngineFixture fixture(systemSays(letters(promptTokens, 300)));
        fixture.load(modelWatchingX());
        QTest::qWait(50); // whether it is done by now or not
        QCOMPARE(reply(fixture, EngineFixture::userSays(letters(promptTokens))), u"n"_s);
        QCOMPARE(reply(fixture, systemSays(letters(promptTokens, 300)) + EngineFixture::userSays(u"b"_s)),
                 QString());
    }

    void anotherModelMayBeLoadedInTheMiddleOfIt()
    {
        EngineFixture fixture(systemSays(letters(promptTokens)));
        fixture.load(modelWatchingX());
        TinyModel other;
        other.reply({TinyModel::byteToken('o')});
        fixture.load(other);
        QCOMPARE(reply(fixture, EngineFixture::userSays(letters(promptTokens, 10))), u"o"_s);
    }

    void itEndsWithAnUnload()
    {
        EngineFixture fixture(systemSays(letters(promptTokens)));
        fixture.load(modelWatchingX());
        fixture.engine().unload();
        QCOMPARE(EngineFixture::failureOf([&] { fixture.reply(8); }), InferenceError::Code::NotLoaded);
        QVERIFY(!fixture.engine().isLoaded());
    }

    // Whatever the engine is doing at that moment.
    void theEngineMayGoAtAnyTime_data()
    {
        QTest::addColumn<int>("wait"); // ms
        for (const int wait : {0, 1, 3, 10, 30})
            QTest::addRow("after %d ms", wait) << wait;
    }

    void theEngineMayGoAtAnyTime()
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

    void aBeginningThatNoModelCanTakeIsNoFailure()
    {
        TinyModel model; // keeps no memory of a prompt
        model.setArchitecture(TinyModel::Architecture::Embedding);
        EngineFixture fixture(systemSays(letters(promptTokens)));
        fixture.load(model);
        QVERIFY(fixture.engine().isLoaded());
        QCOMPARE(EngineFixture::failureOf([&] { fixture.reply(1); }), InferenceError::Code::DecodeFailed);
    }

    void aModelThatCannotForgetTheEndOfAPromptIsAnsweredInFull()
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
