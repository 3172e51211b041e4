// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// A key that press_key supports, and its names elsewhere.
struct MatrixKey
{
    QString name;    // as the model writes it
    QString code;    // KeyboardEvent.code
    QString symbol;  // Qt's name of the key
    QString shifted; // Qt's name with Shift
    QString text;    // what it types into a document, if anything
    QString shiftedText;
};

namespace MatrixKeys {

// All 58 keys.
QList<MatrixKey> all();

// No modifier, each one, and each pair, as the model writes them.
QStringList modifiers();

// "Ctrl+Shift+KeyA"
QString pageName(const MatrixKey &key, const QString &modifiers);

// "Ctrl+Shift+A"
QString symbolName(const MatrixKey &key, const QString &modifiers);

// Combinations that the window manager grabs, as in pageName(). sway grabs none on a private desktop.
QStringList takenByTheDesktop();

} // namespace MatrixKeys
