// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// Prepares the private desktop for the matrix's applications. Thread: main.
namespace MatrixDesktop {

// Adds the sample application to the menu, and makes the browsers use the local proxy at `proxyPort` for all
// other hosts. Call it before any of them starts.
void prepare(quint16 proxyPort);

// The path of the sample application.
QString sample();

// Options for Chromium to run in a container and without first-run pages.
QStringList chromiumSwitches();

// Makes the entry the user's default for these types, and waits until GIO returns it.
void makeDefault(const QString &entry, const QStringList &types);

} // namespace MatrixDesktop
