// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Mac/Window/Foreground.h"
#include "Desktop/PlatformError.h"
#include "Desktop/Recording/RecordingServices.h"
#include "Support/Awaited.h"

#include <QTest>

using namespace Qt::StringLiterals;

// A system with one application, which comes to the front the given time after it was asked to, or opened.
class ForegroundTest : public QObject
{
    Q_OBJECT

private:
    struct System
    {
        RecordingJournal journal;
        RecordingClock clock{journal};
        std::optional<QDateTime> inFront;                 // from when on
        std::optional<std::chrono::milliseconds> request; // how long it takes; none: refused
        std::optional<std::chrono::milliseconds> opening; // none: fails
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
        // The sentence of the failure, or nothing.
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
    void whatIsInFrontIsLeftAlone()
    {
        System system;
        system.inFront = system.clock.time;
        QCOMPARE(system.bring(), QString());
        QCOMPARE(system.done, QStringList());
    }

    void whatComesWhenItIsAskedToIsNotOpened()
    {
        System system;
        system.request = std::chrono::milliseconds(1000);
        QCOMPARE(system.bring(), QString());
        QVERIFY(system.hasKeys());
        QCOMPARE(system.done, QStringList{u"ask"_s});
    }

    void whereTheRequestIsRefusedItIsOpenedAtOnce()
    {
        System system;
        system.opening = std::chrono::milliseconds(1000);
        const QDateTime start = system.clock.time;
        QCOMPARE(system.bring(), QString());
        QVERIFY(system.hasKeys());
        QCOMPARE(system.done, (QStringList{u"ask"_s, u"open"_s}));
        QCOMPARE(start.msecsTo(system.clock.time), 1000);
    }

    void whereNothingComesOfTheRequestItIsOpened()
    {
        System system;
        system.request = std::chrono::hours(1);
        system.opening = std::chrono::milliseconds(0);
        QCOMPARE(system.bring(), QString());
        QCOMPARE(system.done, (QStringList{u"ask"_s, u"open"_s}));
    }

    void whatDoesNotComeIsNoSuccess()
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

    void whereNothingCanBeOpenedTheRequestIsAll()
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
