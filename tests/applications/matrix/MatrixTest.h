// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "applications/matrix/MatrixApplication.h"
#include "applications/matrix/MatrixReport.h"
#include "applications/support/DesktopTest.h"
#include "applications/support/LocalSite.h"

#include <memory>
#include <optional>

// Every kind of action that touches an application, on an application of every toolkit. Each function runs
// once for each row of MatrixApplications. What became of an action is judged by windows, files, pages and
// processes.
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

    // How long an application is given to do something about a key or a press, before the next one.
    static constexpr int answerTime = 1'000; // milliseconds

    // Nothing when the application cannot do that.
    std::optional<MatrixCell> begin(MatrixAction action);

    // Starts the application with its document, page or folder, and waits until that is shown in front.
    [[nodiscard]] bool start();
    [[nodiscard]] bool startWith(const QStringList &arguments, const QString &title);
    // An application that has just shown its window may lose the first keys. Leaves something in the
    // document.
    [[nodiscard]] bool takesKeysInDocument();
    [[nodiscard]] bool takesKeysInPage() const;
    bool showsTitle(const QString &part) const;
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
    // The combinations of which the application told, a line each.
    QString keysReported() const;

    void verifyText(const QString &text);
    void verifyNewFolder(const QString &name);
    // Waits until the text in the document, page or file is exactly this.
    void verifyWritten(const QString &expected);
    bool isWritten(const QString &expected, QString &written) const;

    void verifyAddressOpened(const QString &application);
    void verifySearch(const QString &application);

    MatrixApplication m_application;
    QString m_document; // where its text is saved
    std::unique_ptr<LocalSite> m_site;
    MatrixReport m_report;
};
