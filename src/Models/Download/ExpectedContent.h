// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/ResponseHead.h"
#include "Models/Download/VerifiedFile.h"

#include <QByteArray>
#include <QString>

#include <optional>

// The expected size and digest of a download: verified beforehand, or else announced by the server. Not
// thread-safe.
class ExpectedContent
{
public:
    explicit ExpectedContent(const std::optional<VerifiedFile> &known);

    // Adopts what a response announces. The first response counts: servers it redirects to only deliver the
    // bytes.
    void adopt(const ResponseHead &head);
    // Discards announced values, before another request of the same file.
    void discardAnnounced();

    // Size of the whole file; 0 if unknown.
    qint64 size() const { return m_size; }
    // Whether `size` is more than expected.
    bool isExceededBy(qint64 size) const { return m_size > 0 && size > m_size; }

    // What contradicts the expectation, in a response or in the whole content: one sentence, or empty.
    QString faultOf(const ResponseHead &head) const;
    QString faultOf(qint64 size, const QByteArray &sha256) const;

private:
    QString sizeFault(qint64 size) const;

    const std::optional<VerifiedFile> m_known;
    qint64 m_size = 0;
    QByteArray m_sha256;
};
