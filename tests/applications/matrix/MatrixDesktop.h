// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// What the matrix's applications need on the private desktop. Main thread.
namespace MatrixDesktop {

// Adds the sample application to the menu, and lets the browsers reach nothing but this machine. `proxyPort`:
// where they ask for everything else. To be called before any of them starts.
void prepare(quint16 proxyPort);

// Where the sample application was built.
QString sample();

// What Chromium needs to run in a container, without its first-run pages.
QStringList chromiumSwitches();

// Makes it the user's choice for these types, and waits until this process knows.
void makeDefault(const QString &entry, const QStringList &types);

} // namespace MatrixDesktop
