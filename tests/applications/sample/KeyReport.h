// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QtQmlIntegration>

// Writes the keys pressed in the sample application to a file. Thread: main.
class KeyReport : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one report, made by the program.")
    Q_PROPERTY(bool isWanted READ isWanted CONSTANT)

public:
    // An empty path disables the report.
    explicit KeyReport(const QString &path);

    bool isWanted() const { return m_file.isOpen(); }

    // Adds a line such as "Ctrl+Shift+A", and returns it.
    Q_INVOKABLE QString add(int key, int modifiers);

private:
    QFile m_file;
};
