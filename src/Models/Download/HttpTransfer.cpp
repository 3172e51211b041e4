// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/HttpTransfer.h"

#include "Base/Text.h"
#include "Models/Download/DownloadName.h"
#include "Models/Download/NetworkFailure.h"
#include "Models/Download/SecureAddress.h"

#include <QFile>
#include <QLocale>
#include <QNetworkRequest>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int okStatus = 200;
constexpr int partialStatus = 206;
constexpr int firstFailureStatus = 400;
constexpr int rangeStatus = 416;
constexpr int maximumRedirects = 10;
constexpr qint64 bufferSize = 1 << 20;

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

HttpTransfer::HttpTransfer(quint64 task, const DownloadRequest &request, const TransferOptions &options,
                           const std::stop_token &stop, QNetworkAccessManager &network,
                           DownloadDelegate &delegate, QObject *parent)
    : QObject(parent), m_task(task), m_request(request), m_options(options), m_stop(stop), m_network(network),
      m_delegate(delegate), m_expected(request.verified)
{
    m_partial.emplace(options.downloadsDirectory, downloadName(request.url));
}

HttpTransfer::~HttpTransfer()
{
    releaseReply();
}

void HttpTransfer::begin()
{
    if (m_stop.stop_requested())
        cancel();
    else if (m_options.mirror && !isSecureAddress(*m_options.mirror))
        fail(u"The mirror for models isn't used: its address must begin with https://, or be this "
             "computer's."_s);
    else if (prepare())
        send(m_options.addressOf(m_request.url));
}

void HttpTransfer::cancel()
{
    if (m_partial)
        end(DownloadError{DownloadError::cancelled, u"The download was cancelled."_s});
}

// Checks what can be continued and whether the rest fits; ends the transfer if it cannot begin.
bool HttpTransfer::prepare()
{
    switch (m_partial->lock()) {
    case PartialFile::Lock::HeldByAnother:
        fail(u"Another running copy of the application is already downloading this model."_s);
        return false;
    case PartialFile::Lock::Impossible:
        fail(u"Couldn't write to the downloads folder."_s);
        return false;
    case PartialFile::Lock::Taken:
        break;
    }
    m_continuing = m_partial->canContinue(m_request.url);
    if (!m_continuing)
        m_partial->remove();
    if (!fits(m_request.approximateSize))
        return false;
    if (m_continuing && !m_partial->continueAtEnd(m_stop)) {
        m_stop.stop_requested() ? cancel() : failWriting();
        return false;
    }
    return true;
}

bool HttpTransfer::fits(qint64 wholeSize)
{
    const qint64 needed = wholeSize - m_partial->size();
    const qint64 available = m_options.freeSpace(m_options.downloadsDirectory);
    if (available < 0 || needed <= available)
        return true;
    fail(u"Not enough disk space: the download needs %1, but only %2 are free."_s.arg(sizeText(needed),
                                                                                      sizeText(available)));
    return false;
}

void HttpTransfer::send(const QUrl &url)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(static_cast<int>(m_options.silenceLimit.count()));
    // Sizes, ranges and digests refer to the unencoded file.
    request.setRawHeader("Accept-Encoding", "identity");
    if (m_continuing) {
        request.setRawHeader("Range", "bytes=" + QByteArray::number(m_partial->size()) + "-");
        request.setRawHeader("If-Range", m_partial->origin().validator());
    }
    m_reply = m_network.get(request);
    m_reply->setReadBufferSize(bufferSize);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpTransfer::takeHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpTransfer::takeBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpTransfer::takeEnd);
}

void HttpTransfer::takeHead()
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_receiving || status == 0)
        return;
    const ResponseHead head = ResponseHead::parsed(status, m_reply->rawHeaderPairs());
    m_expected.adopt(head);

    if (head.isRedirect())
        follow(head);
    else if (status >= firstFailureStatus)
        refuse(status);
    else if (status == okStatus)
        takeWhole(head);
    else if (status == partialStatus && m_continuing)
        takeRest(head);
    else
        fail(u"The download server gave an unexpected answer (HTTP %1)."_s.arg(status));
}

void HttpTransfer::follow(const ResponseHead &head)
{
    const QUrl from = m_reply->url();
    const QUrl next = from.resolved(QUrl::fromEncoded(head.location));
    if (!isSafeRedirect(from, next))
        return fail(u"The download server redirected to an address that isn't secure."_s);
    if (++m_redirects > maximumRedirects)
        return fail(u"The download server redirected too often."_s);
    releaseReply();
    send(next);
}

void HttpTransfer::refuse(int status)
{
    if (status == rangeStatus && m_continuing)
        return sendWithoutRange();
    releaseReply();
    m_delegate.downloadFinished({m_task, status, {}, m_request.url});
    end(std::nullopt);
}

void HttpTransfer::takeWhole(const ResponseHead &head)
{
    m_continuing = false;
    if (!beginBody(head))
        return;
    if (!m_partial->startOver(PartialFile::Origin::of(m_request.url, head)))
        return failWriting();
    fits(m_expected.size());
}

// Ends the transfer if the server offers a different file; none of it is worth keeping.
bool HttpTransfer::beginBody(const ResponseHead &head)
{
    const QString fault = m_expected.faultOf(head);
    m_receiving = fault.isEmpty();
    m_isEndKnown = head.size.has_value();
    if (m_receiving)
        return true;
    m_partial->remove();
    fail(fault);
    return false;
}

void HttpTransfer::takeRest(const ResponseHead &head)
{
    if (!m_partial->isContinuedBy(head))
        return sendWithoutRange();
    if (beginBody(head))
        fits(m_expected.size());
}

// The partial content belongs to another version of the file: start over from the first byte.
void HttpTransfer::sendWithoutRange()
{
    releaseReply();
    m_continuing = false;
    m_expected.discardAnnounced();
    m_partial->remove();
    send(m_options.addressOf(m_request.url));
}

void HttpTransfer::takeBody()
{
    if (!m_receiving)
        return;
    while (m_reply && m_reply->bytesAvailable() > 0) {
        const QByteArray bytes = m_reply->read(bufferSize);
        if (m_expected.isExceededBy(m_partial->size() + bytes.size()))
            return cutOff();
        if (!m_partial->write(bytes))
            return failWriting();
    }
    m_reports.due();
}

// More bytes than expected: not the file, and possibly endless.
void HttpTransfer::cutOff()
{
    m_partial->remove();
    fail(u"The download has the wrong size: more than %1 bytes."_s.arg(m_expected.size()));
}

void HttpTransfer::takeEnd()
{
    // A response without a body may finish together with its header.
    const QNetworkReply *reply = m_reply;
    takeHead();
    if (m_reply != reply)
        return;
    // Keep what arrived before the connection broke.
    takeBody();
    if (!m_partial)
        return;
    const QNetworkReply::NetworkError error = m_reply->error();
    if (error != QNetworkReply::NoError)
        return fail(networkFailureSentence(error, m_reply->errorString()));
    // Qt 6.4 reports some lost connections as a regular end.
    if (m_isEndKnown && m_partial->size() < m_expected.size())
        return fail(networkFailureSentence(QNetworkReply::RemoteHostClosedError, {}));
    if (!isAsExpected())
        return;
    if (!m_partial->finish())
        return failWriting();
    releaseReply();
    m_reports.stop();
    m_delegate.downloadFinished({m_task, okStatus, m_partial->path(), m_request.url});
    if (!QFile::exists(m_partial->path()))
        m_partial->remove(); // the record of the moved file
    end(std::nullopt);
}

// Ends the transfer if the content is not as expected. Content that is too short can be continued.
bool HttpTransfer::isAsExpected()
{
    const qint64 size = m_partial->size();
    if (!m_receiving || size == 0) {
        fail(u"The download server sent an empty file."_s);
        return false;
    }
    const QString fault = m_expected.faultOf(size, m_partial->sha256());
    if (fault.isEmpty())
        return true;
    if (size >= m_expected.size())
        m_partial->remove();
    fail(fault);
    return false;
}

void HttpTransfer::releaseReply()
{
    QNetworkReply *reply = std::exchange(m_reply, nullptr);
    if (!reply)
        return;
    // Deleting the reply closes the connection.
    reply->disconnect(this);
    reply->deleteLater();
}

void HttpTransfer::fail(const QString &message)
{
    end(DownloadError{DownloadError::failed, message});
}

void HttpTransfer::failWriting()
{
    const QString reason = Text::cleaned(m_partial->errorString());
    fail(u"Couldn't write the download to disk: %1."_s.arg(reason));
}

void HttpTransfer::end(const std::optional<DownloadError> &error)
{
    releaseReply();
    m_reports.stop();
    // Release the lock before the callback, so that the next download finds the file free.
    m_partial.reset();
    m_delegate.downloadEnded(m_task, error);
    Q_EMIT ended();
}
