// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/matrix/MatrixApplication.h"
#include "applications/matrix/MatrixReport.h"
#include "applications/support/DesktopTest.h"
#include "applications/support/LocalSite.h"

#include <memory>
#include <optional>

// Every kind of action on an application, with an application of every toolkit. Each function runs once per
// row of MatrixApplications. Effects are judged by windows, files, pages and processes.
class MatrixTest : public DesktopTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data();
    void init();
    void opensByItsNames();
    void comesForwardWhenItRuns();
    void quitsWithoutUnsavedWork();
    void asksBeforeUnsavedWorkIsLost();
    void opensANewTab();
    void takesText();
    void takesKeys();
    void pressesControlsByTheirLabels();
    void pressesItemsOfMenus();
    void pressesControlsOfASecondWindow();
    void isReadListedAndPictured();
    void opensAddresses();
    void searchesTheWeb();

private:
    using Kind = MatrixApplication::Kind;

    // The time for an application to respond to a key or a press, before a retry.
    static constexpr int answerTime = 1'000; // milliseconds

    // Nothing if the application doesn't support the action, or it can't be tried here.
    std::optional<MatrixCell> begin(MatrixAction action);

    // Starts the application with its document, page or folder, and waits until its window is active and
    // shows it.
    [[nodiscard]] bool start();
    [[nodiscard]] bool startWith(const QStringList &arguments, const QString &title);
    // Waits until the application handles keys: a new window may lose the first ones. Modifies the document.
    [[nodiscard]] bool takesKeysInDocument();
    [[nodiscard]] bool takesKeysInPage() const;
    bool showsTitle(const QString &part) const;
    bool isNewestActive() const;
    qsizetype windowCount() const { return Screen::windowsOf(m_application.windowClass).size(); }

    void verifyOpening(const QString &name);

    void verifyClick(const MatrixClick &click);
    bool isSeen(const MatrixClick &click, qsizetype windowsBefore) const;
    bool isSeenWhenRepeated(const MatrixClick &click);

    [[nodiscard]] bool press(const QString &key, const QString &modifiers = {});
    [[nodiscard]] bool pressTypingKeys(const QString &modifiers);
    void verifyKeysInDocument();
    void verifyKeysInFolder();
    void verifyEveryKey();
    // The combinations that the application reported, one per line.
    QString keysReported() const;

    void verifyText(const QString &text);
    void verifyLimitedText();
    void verifyNewFolder(const QString &name);
    // Waits until the document, page or file contains exactly this text.
    void verifyWritten(const QString &expected);
    bool isWritten(const QString &expected, QString &written) const;

    void verifyAddressOpened(const QString &application);
    void verifySearch(const QString &application);

    MatrixApplication m_application;
    QString m_document; // the path of its document
    std::unique_ptr<LocalSite> m_site;
    MatrixReport m_report;
};
