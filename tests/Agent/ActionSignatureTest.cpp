// SPDX-License-Identifier: Apache-2.0
#include "Agent/ActionSignature.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QString signatureOf(const QString &reply)
{
    const std::optional<AgentAction> action = AgentAction::parse(reply);
    return action ? actionSignature(*action) : QString();
}

} // namespace

class ActionSignatureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sameStepHasTheSameSignature_data()
    {
        QTest::addColumn<QString>("other");
        QTest::newRow("word for word") << uR"({"action":"click","label":"OK","window":"Main"})"_s;
        QTest::newRow("keys in another order") << uR"({"window":"Main","label":"OK","action":"click"})"_s;
        QTest::newRow("name in another case") << uR"({"action":"CLICK","label":"OK","window":"Main"})"_s;
        QTest::newRow("nested arguments") << uR"({"action":"click","args":{"window":"Main","label":"OK"}})"_s;
    }

    void sameStepHasTheSameSignature()
    {
        QFETCH(QString, other);
        const QString first = signatureOf(uR"({"action":"click","label":"OK","window":"Main"})"_s);
        QVERIFY(!first.isEmpty());
        QCOMPARE(signatureOf(other), first);
    }

    void differentStepsHaveDifferentSignatures_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::newRow("another name")
            << uR"({"action":"open_app","app":"A"})"_s << uR"({"action":"quit_app","app":"A"})"_s;
        QTest::newRow("another value")
            << uR"({"action":"open_app","app":"A"})"_s << uR"({"action":"open_app","app":"B"})"_s;
        QTest::newRow("another letter case")
            << uR"({"action":"open_app","app":"A"})"_s << uR"({"action":"open_app","app":"a"})"_s;
        QTest::newRow("another key") << uR"({"action":"x","a":"1"})"_s << uR"({"action":"x","b":"1"})"_s;
        QTest::newRow("one more argument")
            << uR"({"action":"x","a":"1"})"_s << uR"({"action":"x","a":"1","b":""})"_s;
        QTest::newRow("key and value split elsewhere")
            << uR"({"action":"x","ab":"c"})"_s << uR"({"action":"x","a":"bc"})"_s;
        QTest::newRow("a value that imitates a pair")
            << uR"({"action":"x","a":"b1:c1:d"})"_s << uR"({"action":"x","a":"b","c":"d"})"_s;
        QTest::newRow("a name that imitates a pair")
            << uR"({"action":"x|1:a1:"})"_s << uR"({"action":"x","a":"|"})"_s;
    }

    void differentStepsHaveDifferentSignatures()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        QVERIFY(!signatureOf(left).isEmpty());
        QVERIFY(signatureOf(left) != signatureOf(right));
    }
};

QTEST_GUILESS_MAIN(ActionSignatureTest)
#include "ActionSignatureTest.moc"
