// SPDX-License-Identifier: Apache-2.0
#include "Desktop/KeyRules.h"
#include "Base/PlatformWords.h"
#include "Desktop/PlatformError.h"

#include <QTest>

using namespace Qt::StringLiterals;

class KeyRulesTest : public QObject
{
    Q_OBJECT

private:
    static RunningApplication application(qint64 process, const QString &part = {})
    {
        RunningApplication application;
        application.processIdentifier = process;
        application.localizedName = u"Notes"_s;
        application.part = part;
        return application;
    }

private Q_SLOTS:
    void onlyTheApplicationInFrontGetsKeys_data()
    {
        using Application = std::optional<RunningApplication>;
        QTest::addColumn<Application>("receiver");
        QTest::addColumn<Application>("frontmost");
        QTest::addColumn<QString>("message");
        const QString nobody = u"No application is in front to receive the keys."_s;
        const QString another = u"“Notes” is no longer in front, so no keys were sent."_s;

        QTest::newRow("the receiver")
            << Application(application(7)) << Application(application(7)) << QString();
        QTest::newRow("its only part")
            << Application(application(7)) << Application(application(7, u"calc"_s)) << QString();
        QTest::newRow("the same part")
            << Application(application(7, u"calc"_s)) << Application(application(7, u"calc"_s)) << QString();
        QTest::newRow("no receiver") << Application() << Application(application(7)) << nobody;
        QTest::newRow("nobody in front") << Application(application(7)) << Application() << nobody;
        QTest::newRow("another process")
            << Application(application(7)) << Application(application(8)) << another;
        QTest::newRow("another part")
            << Application(application(7, u"calc"_s)) << Application(application(7, u"writer"_s)) << another;
    }

    void onlyTheApplicationInFrontGetsKeys()
    {
        QFETCH(std::optional<RunningApplication>, receiver);
        QFETCH(std::optional<RunningApplication>, frontmost);
        QString message;
        try {
            KeyRules::requireInFront(receiver, frontmost);
        } catch (const PlatformError &error) {
            message = error.errorDescription();
        }
        QTEST(message, "message");
    }

    void aHeldModifierEndsTheWaitWithASentence()
    {
        const KeyRules::ModifierPatience patience;
        QString message;
        const auto isOver = [&patience, &message] {
            try {
                patience.requireTimeLeft(u"no keys were sent"_s);
            } catch (const PlatformError &error) {
                message = error.errorDescription();
            }
            return !message.isEmpty();
        };
        QTRY_VERIFY(isOver());
        QCOMPARE(message, u"A modifier key (%1) is held down, so no keys were sent."_s.arg(
                              PlatformWords::current().modifierKeys));
    }
};

QTEST_GUILESS_MAIN(KeyRulesTest)
#include "KeyRulesTest.moc"
