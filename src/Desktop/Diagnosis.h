// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>

// One thing that was looked at, how it stands, and what the user can do about it. A plain value, usable on
// any thread. Finding and advice are sentences for people, cleaned: names in them come from the desktop.
struct DiagnosticCheck
{
    enum class State {
        Works,
        Limited, // works, but not all of it, or not always
        Broken,  // is there, and does not do what it should
        Absent,  // is not there
    };
    enum class Need {
        Actions, // actions fail without it
        Comfort, // everything can be done without it, less comfortably
    };

    QString identifier; // stable, for scripts
    QString title;      // for people
    Need need = Need::Actions;
    State state = State::Works;
    QString finding = {};
    QString advice = {}; // empty where there is nothing to do

    // The same check with its result.
    DiagnosticCheck working(const QString &what) const;
    DiagnosticCheck limited(const QString &what, const QString &remedy) const;
    DiagnosticCheck broken(const QString &what, const QString &remedy) const;
    DiagnosticCheck absent(const QString &what, const QString &remedy) const;

    // Whether actions fail because of it.
    bool isObstacle() const;

    friend bool operator==(const DiagnosticCheck &, const DiagnosticCheck &) = default;
};

// Looks at what the actions need of the desktop. Main thread.
class Diagnosis
{
public:
    virtual ~Diagnosis() = default;

    // The checks that make sense here, in a fixed order; without a desktop, the one that says so. Changes
    // nothing: presses no key, shows no window, keeps no key for itself, starts no service. Each check gives
    // up what has not answered within two seconds. Throws nothing.
    virtual QCoro::Task<QList<DiagnosticCheck>> examine() = 0;
};
