// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoroTask>
#include <QList>
#include <QString>

// The result of one check, and what the user can do about it. `finding` and `advice` are sentences for the
// user; they are cleaned because they quote names from the desktop. A plain value, usable on any thread.
struct DiagnosticCheck
{
    enum class State {
        Works,
        Limited, // works partly or unreliably
        Broken,  // present but not working
        Absent,  // missing
    };
    enum class Need {
        Actions, // required by actions
        Comfort, // only a convenience
    };

    QString identifier; // stable, for scripts
    QString title;      // for the user
    Need need = Need::Actions;
    State state = State::Works;
    QString finding = {};
    QString advice = {}; // empty if there is nothing to do

    // A copy of this check with the given result.
    DiagnosticCheck working(const QString &what) const;
    DiagnosticCheck limited(const QString &what, const QString &remedy) const;
    DiagnosticCheck broken(const QString &what, const QString &remedy) const;
    DiagnosticCheck absent(const QString &what, const QString &remedy) const;

    // Whether actions fail because of this result.
    bool isObstacle() const;

    friend bool operator==(const DiagnosticCheck &, const DiagnosticCheck &) = default;
};

// Checks what the actions need from the desktop. Thread: main.
class Diagnosis
{
public:
    virtual ~Diagnosis() = default;

    // Runs the checks that apply to this desktop, in a fixed order; without a desktop, returns the single
    // check that reports its absence. Has no side effects: sends no keys, shows no windows, keeps no grabs,
    // starts no services. Each request times out after two seconds. Never throws.
    virtual QCoro::Task<QList<DiagnosticCheck>> examine() = 0;
};
