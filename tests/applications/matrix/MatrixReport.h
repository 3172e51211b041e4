// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/matrix/MatrixApplication.h"

#include <QMap>

#include <utility>

// Collects the results of the matrix's cells. The destructor prints the matrix, a line per application and a
// column per action, followed by the reasons for unsupported actions and by limits. Thread: main.
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
    QStringList m_reasons; // numbered in the order of their first use
    QStringList m_limits;  // lettered likewise
};

// The test of one cell: marked as failed, unless the test has not failed when this object is destroyed.
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
