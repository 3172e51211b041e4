// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/Foreground.h"
#include "Desktop/PlatformError.h"
#include "Desktop/Recording/RecordingServices.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

// A fake system with one application, which comes to the front a given time after a request or after being
// opened.
class ForegroundTest : public QObject
{
    Q_OBJECT

private:
    struct System
    {
        RecordingJournal journal;
        RecordingClock clock{journal};
        std::optional<QDateTime> inFront;                 // since when
        std::optional<std::chrono::milliseconds> request; // the delay after a request; nothing if refused
        std::optional<std::chrono::milliseconds> opening; // the delay after opening; nothing if it fails
        QStringList done;

        bool hasKeys() const { return inFront && clock.time >= *inFront; }
        bool ask()
        {
            done.append(u"ask"_s);
            if (request)
                inFront = clock.time.addMSecs(request->count());
            return request.has_value();
        }
        QCoro::Task<void> open()
        {
            done.append(u"open"_s);
            if (!opening)
                throw PlatformError(u"It cannot be opened."_s);
            inFront = clock.time.addMSecs(opening->count());
            co_return;
        }
        Foreground::Means means()
        {
            return {[this] { return hasKeys(); }, [this] { return ask(); }, [this] { return open(); }};
        }
        // The error message, or an empty string.
        QString bring() { return bring(means()); }
        QString bring(const Foreground::Means &means)
        {
            try {
                Awaited::result(Foreground::bring(u"Notes"_s, means, clock));
                return {};
            } catch (const PlatformError &error) {
                return error.errorDescription();
            }
        }
    };

private Q_SLOTS:
    void aFrontmostApplicationIsLeftAlone()
    {
        System system;
        system.inFront = system.clock.time;
        QCOMPARE(system.bring(), QString());
        QCOMPARE(system.done, QStringList());
    }

    void aSuccessfulRequestIsEnough()
    {
        System system;
        system.request = std::chrono::milliseconds(1000);
        QCOMPARE(system.bring(), QString());
        QVERIFY(system.hasKeys());
        QCOMPARE(system.done, QStringList{u"ask"_s});
    }

    void aRefusedRequestOpensTheApplicationAtOnce()
    {
        System system;
        system.opening = std::chrono::milliseconds(1000);
        const QDateTime start = system.clock.time;
        QCOMPARE(system.bring(), QString());
        QVERIFY(system.hasKeys());
        QCOMPARE(system.done, (QStringList{u"ask"_s, u"open"_s}));
        QCOMPARE(start.msecsTo(system.clock.time), 1000);
    }

    void anIneffectiveRequestOpensTheApplication()
    {
        System system;
        system.request = std::chrono::hours(1);
        system.opening = std::chrono::milliseconds(0);
        QCOMPARE(system.bring(), QString());
        QCOMPARE(system.done, (QStringList{u"ask"_s, u"open"_s}));
    }

    void notComingForwardIsAnError()
    {
        System system;
        system.opening = std::chrono::hours(1);
        QCOMPARE(system.bring(), u"“Notes” did not come to the front."_s);
        QVERIFY(!system.hasKeys());
    }

    void theSystemsErrorIsPassedOn()
    {
        System system;
        QCOMPARE(system.bring(), u"It cannot be opened."_s);
    }

    void withoutAWayToOpenOnlyTheRequestIsMade()
    {
        System system;
        Foreground::Means means = system.means();
        means.open = nullptr;
        QCOMPARE(system.bring(means), u"“Notes” did not come to the front."_s);
        QCOMPARE(system.done, QStringList{u"ask"_s});
    }
};

QTEST_GUILESS_MAIN(ForegroundTest)
#include "ForegroundTest.moc"
