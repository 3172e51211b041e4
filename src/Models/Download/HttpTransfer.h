// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/DownloadSession.h"
#include "Models/Download/ExpectedContent.h"
#include "Models/Download/PacedReports.h"
#include "Models/Download/PartialFile.h"
#include "Models/Download/ResponseHead.h"
#include "Models/Download/TransferOptions.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>

#include <stop_token>

// One HTTP download from request to end. Continues a partial file if the server still has the same version,
// follows redirects to secure addresses only, and delivers only content of the expected size and digest.
// Lives on the session's thread and calls the delegate there.
class HttpTransfer : public QObject
{
    Q_OBJECT

public:
    // `network` and `delegate` must outlive the transfer. `stop` interrupts the work before the request.
    HttpTransfer(quint64 task, const DownloadRequest &request, const TransferOptions &options,
                 const std::stop_token &stop, QNetworkAccessManager &network, DownloadDelegate &delegate,
                 QObject *parent);
    ~HttpTransfer() override;

    void begin();
    void cancel();

Q_SIGNALS:
    // Emitted after the delegate's last callback.
    void ended();

private:
    bool prepare();
    bool fits(qint64 wholeSize);
    void send(const QUrl &url);
    void takeHead();
    void follow(const ResponseHead &head);
    void refuse(int status);
    void takeWhole(const ResponseHead &head);
    void takeRest(const ResponseHead &head);
    bool beginBody(const ResponseHead &head);
    void sendWithoutRange();
    void takeBody();
    void cutOff();
    void takeEnd();
    bool isAsExpected();
    void releaseReply();
    void fail(const QString &message);
    void failWriting();
    void end(const std::optional<DownloadError> &error);

    const quint64 m_task;
    const DownloadRequest m_request;
    const TransferOptions m_options;
    const std::stop_token m_stop;
    QNetworkAccessManager &m_network;
    DownloadDelegate &m_delegate;

    std::optional<PartialFile> m_partial; // empty once the transfer has ended
    QNetworkReply *m_reply = nullptr;
    PacedReports m_reports{
        [this] { m_delegate.downloadProgressed(m_task, m_partial->size(), m_expected.size()); }};
    bool m_continuing = false;
    bool m_receiving = false;
    bool m_isEndKnown = false; // the response has announced its size
    int m_redirects = 0;
    ExpectedContent m_expected;
};
