// SPDX-License-Identifier: Apache-2.0
#include "Inference/Llama/PromptTemplate.h"
#include "Inference/Llama/LibraryCount.h"

#include <QProcess>
#include <QTest>

#include <llama.h>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

constexpr auto overflowArgument = "overflow";

// Replaces the library call: renders messages in a fixed notation and counts calls.
struct ScriptedTemplate
{
    QByteArray rendering;
    QList<qint32> sizes;
    QList<QByteArray> texts;

    PromptTemplate::Apply apply()
    {
        return [this](const llama_chat_message *chat, size_t count, char *buffer, qint32 size) {
            sizes.append(size);
            texts.clear();
            for (size_t i = 0; i < count; ++i)
                texts << chat[i].role << chat[i].content;
            std::memcpy(buffer, rendering.constData(),
                        static_cast<size_t>(std::min<qint64>(size, rendering.size())));
            return static_cast<qint32>(rendering.size());
        };
    }
};

const PromptTemplate::Apply rejecting = [](const llama_chat_message *, size_t, char *, qint32) { return -1; };

const QList<ChatMessage> conversation = {{ChatMessage::Role::System, u"Rules."_s},
                                         {ChatMessage::Role::User, u"Task\nand “state”"_s}};

} // namespace

// Rendering of a conversation.
class PromptTemplateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRejectedTemplateGivesChatML()
    {
        QCOMPARE(PromptTemplate::render(conversation, rejecting),
                 u"<|im_start|>system\nRules.<|im_end|>\n"
                 "<|im_start|>user\nTask\nand “state”<|im_end|>\n"
                 "<|im_start|>assistant\n"_s);
    }

    void anEmptyConversationWithARejectedTemplateGivesTheOpeningOnly()
    {
        QCOMPARE(PromptTemplate::render({}, rejecting), u"<|im_start|>assistant\n"_s);
    }

    void rolesAndContentsReachTheTemplateInOrder()
    {
        ScriptedTemplate scripted{"prompt", {}, {}};
        PromptTemplate::render(conversation, scripted.apply());
        const QList<QByteArray> expected = {"system", "Rules.", "user", "Task\nand “state”"};
        QCOMPARE(scripted.texts, expected);
    }

    void theFirstBufferIsSizedInBytes_data()
    {
        QTest::addColumn<QList<ChatMessage>>("messages");
        QTest::addColumn<qint32>("size");
        const auto one = [](const QString &text) {
            return QList<ChatMessage>{{ChatMessage::Role::User, text}};
        };
        QTest::newRow("empty conversation") << QList<ChatMessage>() << 0;
        QTest::newRow("empty content") << one({}) << 128;
        QTest::newRow("letters") << one(u"abc"_s) << 2 * (3 + 64);
        QTest::newRow("curly quotes of three bytes") << one(u"“”"_s) << 2 * (6 + 64);
        QTest::newRow("emoji of four bytes") << one(u"😀"_s) << 2 * (4 + 64);
        QTest::newRow("two messages") << one(u"a"_s) + one(u"bb"_s) << 2 * (1 + 64 + 2 + 64);
    }

    void theFirstBufferIsSizedInBytes()
    {
        QFETCH(QList<ChatMessage>, messages);
        QTEST(PromptTemplate::bufferSize(messages), "size");
        ScriptedTemplate scripted;
        PromptTemplate::render(messages, scripted.apply());
        QTEST(scripted.sizes.value(0), "size");
    }

    void aRenderingThatFitsTakesOneCall()
    {
        const qint32 size = PromptTemplate::bufferSize(conversation);
        ScriptedTemplate scripted{QByteArray(size, 'x'), {}, {}};
        QCOMPARE(PromptTemplate::render(conversation, scripted.apply()), QString(size, u'x'));
        QCOMPARE(scripted.sizes, QList<qint32>({size}));
    }

    void aLongerRenderingIsCompleteAfterOneRetry()
    {
        const qint32 size = PromptTemplate::bufferSize(conversation);
        ScriptedTemplate scripted{QByteArray(size, 'x') + "end", {}, {}};
        QCOMPARE(PromptTemplate::render(conversation, scripted.apply()), QString(size, u'x') + u"end"_s);
        QCOMPARE(scripted.sizes, QList<qint32>({size, size + 3 + 1}));
    }

    void thereIsNoThirdAttempt()
    {
        int calls = 0;
        const PromptTemplate::Apply growing = [&calls](const llama_chat_message *, size_t, char *,
                                                       qint32 size) {
            ++calls;
            return size + 10;
        };
        PromptTemplate::render(conversation, growing);
        QCOMPARE(calls, 2);
    }

    void aRetryThatFailsGivesChatML()
    {
        const PromptTemplate::Apply failingLater = [](const llama_chat_message *, size_t, char *,
                                                      qint32 size) { return size == 0 ? 100 : -1; };
        QCOMPARE(PromptTemplate::render({}, failingLater), u"<|im_start|>assistant\n"_s);
    }

    void invalidBytesOfTheRenderingAreReplaced()
    {
        ScriptedTemplate scripted{"a\xFFz“", {}, {}};
        QCOMPARE(PromptTemplate::render(conversation, scripted.apply()), u"a\uFFFDz“"_s);
    }

    void aLengthBeyond32BitsEndsTheProcess()
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(), {QLatin1String(overflowArgument)});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QVERIFY(process.readAll().contains("2147483648 does not fit"));
    }

    void aLengthOf32BitsIsTaken() { QCOMPARE(libraryCount(2147483647), 2147483647); }
};

int main(int argc, char *argv[])
{
    if (argc > 1 && std::strcmp(argv[1], overflowArgument) == 0)
        return libraryCount(2147483648);
    QCoreApplication application(argc, argv);
    PromptTemplateTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "PromptTemplateTest.moc"
