// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QtQmlIntegration>

// The text document of the sample application. Thread: main.
class SampleDocument : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("There is one document, made by the program.")
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString savedText READ savedText NOTIFY saved)

public:
    // Without a path, it can't be saved.
    explicit SampleDocument(const QString &path);

    QString name() const;
    QString savedText() const { return m_savedText; }

    Q_INVOKABLE void save(const QString &text);

Q_SIGNALS:
    void saved();

private:
    const QString m_path;
    QString m_savedText;
};
