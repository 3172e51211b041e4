// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

class LocalSite;

// Text fields of real applications, for a test to type into. Main thread.
namespace TextFields {

// The rows of a test: an editor of each toolkit, in the columns "program" and "windowClass".
void addEditors();

// Opens a file with that content in an editor; false when that takes too long.
bool openFile(const QString &path, const QByteArray &content, const QString &program,
              const QString &windowClass);

// Waits until the file holds the text, as an editor saves it; where the two differ, if it does not.
QString differenceInFile(const QString &path, const QString &text);

// Adds the page "/notes", which is one text field. It reports "ready" when it gets the focus, and its text
// whenever that changes.
void addPage(LocalSite &site);

} // namespace TextFields
