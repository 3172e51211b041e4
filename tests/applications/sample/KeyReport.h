// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QtQmlIntegration>

// The list of the keys that were pressed in the sample application, in a file. Main thread.
class KeyReport : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one report, made by the program.")
    Q_PROPERTY(bool isWanted READ isWanted CONSTANT)

public:
    // Without a path, nothing is reported.
    explicit KeyReport(const QString &path);

    bool isWanted() const { return m_file.isOpen(); }

    // Adds a line such as "Ctrl+Shift+A", and gives it back.
    Q_INVOKABLE QString add(int key, int modifiers);

private:
    QFile m_file;
};
