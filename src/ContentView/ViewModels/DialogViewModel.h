// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Desktop/Dialogs.h"

#include <QObject>
#include <QtQmlIntegration>

// A script's question, prepared for display: with visible marks for invisible characters. Thread: main.
// `dialogs` is not owned and must outlive this object.
class DialogViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Part of the content")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(QStringList buttons READ buttons NOTIFY changed)
    Q_PROPERTY(int defaultButton READ defaultButton NOTIFY changed)
    Q_PROPERTY(int cancelButton READ cancelButton NOTIFY changed)
    Q_PROPERTY(bool hasField READ hasField NOTIFY changed)
    Q_PROPERTY(QString initialText READ initialText NOTIFY changed)
    Q_PROPERTY(bool hidesText READ hidesText NOTIFY changed)
    Q_PROPERTY(bool hasList READ hasList NOTIFY changed)
    Q_PROPERTY(QStringList items READ items NOTIFY changed)
    Q_PROPERTY(QList<int> initiallyChosen READ initiallyChosen NOTIFY changed)
    Q_PROPERTY(bool takesSeveral READ takesSeveral NOTIFY changed)
    Q_PROPERTY(bool takesNone READ takesNone NOTIFY changed)

public:
    explicit DialogViewModel(Dialogs &dialogs, QObject *parent = nullptr);

    bool isOpen() const { return m_dialogs.pending().has_value(); }
    QString title() const;
    QString text() const;
    QString message() const;
    QStringList buttons() const;
    // Indices of `buttons`; -1 if there is none.
    int defaultButton() const { return shown().defaultButton; }
    int cancelButton() const { return shown().cancelButton; }

    bool hasField() const { return shown().answer.has_value(); }
    QString initialText() const { return shown().answer.value_or(QString()); }
    bool hidesText() const { return shown().hidesAnswer; }

    bool hasList() const { return shown().items.has_value(); }
    QStringList items() const;
    QList<int> initiallyChosen() const { return shown().chosen; }
    bool takesSeveral() const { return shown().takesSeveral; }
    bool takesNone() const { return shown().takesNone; }

    // Answers the dialog.
    Q_INVOKABLE void press(int button, const QString &typed, QList<int> chosen);

Q_SIGNALS:
    void changed();

private:
    // An empty one if none is open.
    Dialog shown() const { return m_dialogs.pending().value_or(Dialog()); }

    Dialogs &m_dialogs;
};
