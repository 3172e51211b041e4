// SPDX-License-Identifier: Apache-2.0
#include "Inference/EngineFixture.h"
#include "Inference/RecordedConversation.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

// A model that somebody trained, through the engine as the program runs it.
class PracticeModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstStepOfATaskIsPlanned()
    {
        EngineFixture fixture;
        Awaited::result(fixture.engine().load(QStringLiteral(ORVANE_PRACTICE_MODEL)));
        const QList<ChatMessage> task = RecordedConversation::prompts(RecordedConversation::read(3)).first();
        const QString reply = Awaited::result(fixture.engine().generate(task, 200, fixture.collect()));
        const QJsonObject action = QJsonDocument::fromJson(reply.toUtf8()).object();
        QVERIFY2(action[u"action"_s].isString(), qPrintable(reply));
    }
};

QTEST_GUILESS_MAIN(PracticeModelTest)
#include "PracticeModelTest.moc"
