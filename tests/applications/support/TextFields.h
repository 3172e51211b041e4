// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

class LocalSite;

// Text fields of real applications as typing targets. Thread: main.
namespace TextFields {

// Adds test rows: an editor of each toolkit, in the columns "program" and "windowClass".
void addEditors();

// Opens a file with this content in an editor; returns false on timeout.
bool openFile(const QString &path, const QByteArray &content, const QString &program,
              const QString &windowClass);

// Waits until the file contains the text as saved by an editor. Returns an empty string, or on timeout the
// first difference.
QString differenceInFile(const QString &path, const QString &text);

// Adds the page "/notes", a single text field. The page reports "ready" when the field gets the focus, and
// the text on every change.
void addPage(LocalSite &site);

} // namespace TextFields
