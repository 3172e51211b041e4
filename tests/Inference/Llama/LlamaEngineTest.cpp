// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/EngineFixture.h"

#include <QSemaphore>
#include <QSet>
#include <QTest>
#include <QThread>

using namespace Qt::StringLiterals;
using Code = InferenceError::Code;

namespace {

constexpr auto byteToken = &TinyModel::byteToken;

// The default rendering around one user message; each byte is one token.
const QString opening = u"<|im_start|>user\n"_s;
const QString closing = u"<|im_end|>\n<|im_start|>assistant\n"_s;

// A message whose prompt has this many tokens, with a watched "X" at one position (-1: none).
QString messageForPrompt(int tokens, int watchedAt = -1)
{
    QString content(tokens - opening.size() - closing.size(), u'a');
    if (watchedAt >= 0)
        content[watchedAt - opening.size()] = u'X';
    return content;
}

// Replies "n", or nothing if the prompt contains an "X".
TinyModel modelWatchingX()
{
    TinyModel model;
    model.reply({byteToken('n')});
    model.watch(byteToken('X'), TinyModel::endOfSequence);
    return model;
}

// Replies "ab" endlessly.
TinyModel endlessModel()
{
    TinyModel model;
    model.reply({byteToken('a'), byteToken('b')});
    model.follow(byteToken('b'), byteToken('a'));
    return model;
}

} // namespace

// Generation with the real library and models with known replies.
class LlamaEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theReplyEndsAtTheEndOfGeneration()
    {
        EngineFixture fixture;
        TinyModel model;
        model.reply({model.addToken("{\"action\":"), model.addToken("\"done\""), byteToken('}')});
        fixture.load(model);
        QCOMPARE(fixture.reply(200), u"{\"action\":\"done\"}"_s);
        QCOMPARE(fixture.pieces, QStringList({u"{\"action\":"_s, u"\"done\""_s, u"}"_s}));
    }

    void specialTokensAreNotRendered()
    {
        EngineFixture fixture;
        TinyModel model;
        model.reply({byteToken('a'), model.addToken("<|tool|>", TinyModel::Kind::Control), byteToken('b')});
        fixture.load(model);
        QCOMPARE(fixture.reply(200), u"ab"_s);
        QCOMPARE(fixture.pieces, QStringList({u"a"_s, u"b"_s}));
    }

    void aReplyThatReachesTheLimitIsReturnedUnfinished()
    {
        EngineFixture fixture;
        TinyModel model;
        model.reply({model.addToken("{\"action\":"), model.addToken("\"open_app\","), byteToken('}')});
        fixture.load(model);
        QCOMPARE(fixture.reply(2), u"{\"action\":\"open_app\","_s);
    }

    void anEndlessReplyHasAsManyTokensAsAllowed()
    {
        EngineFixture fixture;
        fixture.load(endlessModel());
        QCOMPARE(fixture.reply(200), u"ab"_s.repeated(100));
        QCOMPARE(fixture.pieces.size(), 200);
    }

    void withoutTokensToGenerateThePromptIsNotDecoded()
    {
        // Such a model cannot generate: decoding a prompt fails.
        EngineFixture fixture;
        TinyModel model;
        model.setArchitecture(TinyModel::Architecture::Embedding);
        fixture.load(model);
        QCOMPARE(fixture.reply(0), QString());
        QCOMPARE(fixture.failureOf([&] { fixture.reply(1); }), Code::DecodeFailed);
        QVERIFY(fixture.engine().isLoaded());
    }

    void aNegativeLimitGivesAnEmptyReply()
    {
        EngineFixture fixture;
        fixture.load(endlessModel());
        QCOMPARE(fixture.reply(-1), QString());
    }

    void anEmojiOfTwoTokensArrivesOnceWhole()
    {
        EngineFixture fixture;
        TinyModel model;
        model.reply({byteToken('a'), model.addToken("\xF0\x9F"), model.addToken("\x98\x80"), byteToken('b')});
        fixture.load(model);
        QCOMPARE(fixture.reply(200), u"a😀b"_s);
        QCOMPARE(fixture.pieces, QStringList({u"a"_s, u"😀"_s, u"b"_s}));
    }

    void anUnfinishedCharacterAtTheEndIsDropped_data()
    {
        QTest::addColumn<int>("maxTokens");
        QTest::newRow("end of generation") << 200;
        QTest::newRow("limit") << 2;
    }

    void anUnfinishedCharacterAtTheEndIsDropped()
    {
        QFETCH(int, maxTokens);
        EngineFixture fixture;
        TinyModel model;
        model.reply({byteToken('a'), model.addToken("\xF0\x9F")});
        fixture.load(model);
        QCOMPARE(fixture.reply(maxTokens), u"a"_s);
    }

    void aPieceLongerThanTheBufferAddsNothing()
    {
        EngineFixture fixture;
        TinyModel model;
        model.reply({byteToken('a'), model.addToken(QByteArray(65, 'l')), model.addToken(QByteArray(64, 'f')),
                     byteToken('b')});
        fixture.load(model);
        QCOMPARE(fixture.reply(200), u'a' + QString(64, u'f') + u'b');
    }

    void piecesArriveOnTheEnginesOwnThread()
    {
        EngineFixture fixture;
        fixture.load(endlessModel());
        fixture.reply(1);
        QVERIFY(fixture.pieceThread);
        QVERIFY(fixture.pieceThread != QThread::currentThread());
        QCOMPARE(fixture.pieceThreadName, u"llama.engine"_s);
    }

    void aLongPromptShowsTheModelItsHeadAndTail_data()
    {
        QTest::addColumn<int>("watchedAt");
        QTest::addColumn<QString>("reply");
        QTest::newRow("last of the head") << 899 << QString();
        QTest::newRow("first after the head") << 900 << u"n"_s;
        QTest::newRow("last before the tail") << 5000 - 2796 - 1 << u"n"_s;
        QTest::newRow("first of the tail") << 5000 - 2796 << QString();
        QTest::newRow("nowhere") << -1 << u"n"_s;
    }

    void aLongPromptShowsTheModelItsHeadAndTail()
    {
        QFETCH(int, watchedAt);
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        QTEST(fixture.reply(400, messageForPrompt(5000, watchedAt)), "reply");
    }

    void aPromptThatJustFitsIsSeenWhole()
    {
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        QCOMPARE(fixture.reply(400, messageForPrompt(3696, 1500)), QString());
        QCOMPARE(fixture.reply(400, messageForPrompt(3697, 1500)), QString());
        QCOMPARE(fixture.reply(400, messageForPrompt(3697, 900)), u"n"_s);
    }

    void withAlmostAllTokensForTheReplyOnlyAPromptThatFitsIsTaken()
    {
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        QCOMPARE(fixture.failureOf([&] { fixture.reply(4040, messageForPrompt(57)); }), Code::TokenizeFailed);
        QCOMPARE(fixture.reply(4040, messageForPrompt(56)), u"n"_s);
        QCOMPARE(fixture.failureOf([&] { fixture.reply(4040, messageForPrompt(5000)); }),
                 Code::TokenizeFailed);
        QVERIFY(fixture.engine().isLoaded());
    }

    void noGenerationSeesTheOneBeforeIt()
    {
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        QCOMPARE(fixture.reply(10, u"X"_s), QString());
        QCOMPARE(fixture.reply(10, u"Y"_s), u"n"_s);
        // Two such prompts do not fit into one context.
        QCOMPARE(fixture.reply(10, messageForPrompt(4000)), u"n"_s);
        QCOMPARE(fixture.reply(10, messageForPrompt(4000)), u"n"_s);
    }

    void generationsIssuedTogetherRunOneAfterTheOther()
    {
        EngineFixture fixture;
        fixture.load(modelWatchingX());
        QStringList order;
        const auto note = [&order](const QString &who) {
            return [&order, who](const QString &text) { order.append(who + text); };
        };
        QCoro::Task<QString> first = fixture.engine().generate(fixture.userSays(u"Y"_s), 10, note(u"1"_s));
        QCoro::Task<QString> second = fixture.engine().generate(fixture.userSays(u"X"_s), 10, note(u"2"_s));
        QCoro::Task<QString> third = fixture.engine().generate(fixture.userSays(u"Y"_s), 10, note(u"3"_s));
        QCOMPARE(Awaited::result(std::move(third)), u"n"_s);
        QCOMPARE(Awaited::result(std::move(second)), QString());
        QCOMPARE(Awaited::result(std::move(first)), u"n"_s);
        QCOMPARE(order, QStringList({u"1n"_s, u"3n"_s}));
    }

    void anUnloadBetweenGenerationsTakesEffectInItsTurn()
    {
        EngineFixture fixture;
        fixture.load(endlessModel());
        QCoro::Task<QString> before =
            fixture.engine().generate(fixture.userSays(u"Hi"_s), 100, fixture.collect());
        fixture.engine().unload();
        QCoro::Task<QString> after =
            fixture.engine().generate(fixture.userSays(u"Hi"_s), 100, fixture.collect());
        QCOMPARE(fixture.failureOf([&] { Awaited::result(std::move(after)); }), Code::NotLoaded);
        QCOMPARE(Awaited::result(std::move(before)), u"ab"_s.repeated(50));
    }

    void destructionEndsAReplyEarly()
    {
        QString text;
        QSemaphore begun;
        {
            EngineFixture fixture;
            fixture.load(endlessModel());
            // Slow enough to end the engine in the middle.
            const auto collect = [&text, &begun](const QString &piece) {
                text += piece;
                begun.release();
                QThread::msleep(1);
            };
            QCoro::Task<QString> dropped =
                fixture.engine().generate(fixture.userSays(u"Hi"_s), 3000, collect);
            QVERIFY(begun.tryAcquire(1, Awaited::timeoutMilliseconds));
        }
        QVERIFY(!text.isEmpty());
        QVERIFY(text.size() < 3000);
    }

    void onlyTheFortyLikeliestTokensAreDrawn()
    {
        EngineFixture fixture;
        TinyModel model;
        for (char letter = '0'; letter < '0' + 60; ++letter) {
            model.follow(byteToken('\n'), byteToken(letter));
            for (char next = '0'; next < '0' + 60; ++next)
                model.follow(byteToken(letter), byteToken(next));
        }
        fixture.load(model);
        const QString reply = fixture.reply(2000);
        const QSet<QChar> drawn(reply.begin(), reply.end());
        QCOMPARE(reply.size(), 2000);
        QCOMPARE(drawn.size(), 40);
    }

    // At temperature 1 the less likely token would be drawn about 18 times in 1,000; at 0.2 once in 500,000.
    void theTemperatureFavoursTheLikelierToken()
    {
        EngineFixture fixture;
        TinyModel model;
        for (const char last : {'\n', 'a', 'b'}) {
            model.follow(byteToken(last), byteToken('a'), TinyModel::certain);
            model.follow(byteToken(last), byteToken('b'), TinyModel::certain - 4);
        }
        fixture.load(model);
        QCOMPARE(fixture.reply(1000), QString(1000, u'a'));
    }

    void everyGenerationDrawsAnew()
    {
        EngineFixture fixture;
        TinyModel model;
        for (const char last : {'\n', 'a', 'b'}) {
            model.follow(byteToken(last), byteToken('a'));
            model.follow(byteToken(last), byteToken('b'));
        }
        fixture.load(model);
        const QString first = fixture.reply(100);
        QVERIFY(first.contains(u'a') && first.contains(u'b'));
        QVERIFY(fixture.reply(100) != first);
    }
};

QTEST_GUILESS_MAIN(LlamaEngineTest)
#include "LlamaEngineTest.moc"
