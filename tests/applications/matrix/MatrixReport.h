// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/matrix/MatrixApplication.h"

#include <QMap>

#include <utility>

// Collects which cells of the matrix work, and prints the matrix at its end: a line an application, a column
// an action, and below the reasons why something cannot work. Main thread.
class MatrixReport
{
public:
    MatrixReport() = default;
    ~MatrixReport();
    MatrixReport(const MatrixReport &) = delete;
    MatrixReport &operator=(const MatrixReport &) = delete;

    enum class Verdict { NotRun, Failed, Works };

    void set(const QString &heading, MatrixAction action, Verdict verdict);

private:
    QString table(const QString &title, const QList<MatrixAction> &actions);
    QString cell(const MatrixApplication &application, MatrixAction action);

    QMap<std::pair<QString, MatrixAction>, Verdict> m_verdicts;
    QStringList m_reasons; // in the order in which they are first met
};

// The test of one cell: it has failed until the test gets to this object's end without a failure.
class MatrixCell
{
public:
    MatrixCell(MatrixReport &report, const QString &heading, MatrixAction action);
    ~MatrixCell();
    MatrixCell(const MatrixCell &) = delete;
    MatrixCell &operator=(const MatrixCell &) = delete;

private:
    MatrixReport &m_report;
    const QString m_heading;
    const MatrixAction m_action;
};
