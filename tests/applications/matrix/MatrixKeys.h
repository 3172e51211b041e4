// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

// A key that press_key knows, and what others call it.
struct MatrixKey
{
    QString name;    // as the model writes it
    QString code;    // as pages call the key
    QString symbol;  // as Qt calls what it types
    QString shifted; // the same with Shift
    QString text;    // what it types into a document; empty: nothing
    QString shiftedText;
};

namespace MatrixKeys {

// All 58.
QList<MatrixKey> all();

// None, each alone, and each pair, as the model writes them.
QStringList modifiers();

// "Ctrl+Shift+KeyA"
QString pageName(const MatrixKey &key, const QString &modifiers);

// "Ctrl+Shift+A"
QString symbolName(const MatrixKey &key, const QString &modifiers);

// Combinations, as pageName() writes them, that the window manager keeps to itself.
const QStringList &takenByTheWindowManager();

} // namespace MatrixKeys
