// SPDX-License-Identifier: Apache-2.0
#include "Inference/ChatMessage.h"
#include "Inference/InferenceError.h"

#include <QTest>

using namespace Qt::StringLiterals;

// Role names and the engine's error descriptions.
class ChatMessageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rolesHaveTheirRawValues()
    {
        QCOMPARE(ChatMessage::rawValue(ChatMessage::Role::System), u"system"_s);
        QCOMPARE(ChatMessage::rawValue(ChatMessage::Role::User), u"user"_s);
        QCOMPARE(ChatMessage::rawValue(ChatMessage::Role::Assistant), u"assistant"_s);
    }

    void aRawValueGivesItsRole()
    {
        QCOMPARE(ChatMessage::roleFromRawValue(u"system"_s), ChatMessage::Role::System);
        QCOMPARE(ChatMessage::roleFromRawValue(u"user"_s), ChatMessage::Role::User);
        QCOMPARE(ChatMessage::roleFromRawValue(u"assistant"_s), ChatMessage::Role::Assistant);
    }

    void anyOtherTextGivesNoRole_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("capital letter") << u"System"_s;
        QTest::newRow("tool") << u"tool"_s;
        QTest::newRow("empty") << QString();
        QTest::newRow("blank at the end") << u"user "_s;
        QTest::newRow("part of a role") << u"assist"_s;
    }

    void anyOtherTextGivesNoRole()
    {
        QFETCH(QString, text);
        QVERIFY(!ChatMessage::roleFromRawValue(text));
    }

    void everyErrorHasItsDescription_data()
    {
        using Code = InferenceError::Code;
        QTest::addColumn<Code>("code");
        QTest::addColumn<QString>("description");
        QTest::newRow("notLoaded") << Code::NotLoaded << u"The language model isn't loaded yet."_s;
        QTest::newRow("tooLittleMemory")
            << Code::TooLittleMemory
            << u"There isn't enough free memory for this model. Close other programs and try again."_s;
        QTest::newRow("loadFailed") << Code::LoadFailed << u"Couldn't load the model file."_s;
        QTest::newRow("contextFailed") << Code::ContextFailed << u"Couldn't create an inference context."_s;
        QTest::newRow("tokenizeFailed") << Code::TokenizeFailed << u"Couldn't tokenize the prompt."_s;
        QTest::newRow("decodeFailed") << Code::DecodeFailed << u"The model failed while generating."_s;
    }

    void everyErrorHasItsDescription()
    {
        QFETCH(InferenceError::Code, code);
        QTEST(InferenceError(code).errorDescription(), "description");
    }

    void errorsAreEqualWhenTheirCodesAre()
    {
        const InferenceError error(InferenceError::Code::LoadFailed);
        QVERIFY(error == InferenceError(InferenceError::Code::LoadFailed));
        QVERIFY(!(error == InferenceError(InferenceError::Code::DecodeFailed)));
    }
};

QTEST_GUILESS_MAIN(ChatMessageTest)
#include "ChatMessageTest.moc"
