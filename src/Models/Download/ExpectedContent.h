// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Models/Download/ResponseHead.h"
#include "Models/Download/VerifiedFile.h"

#include <QByteArray>
#include <QString>

#include <optional>

// What the content of a download has to be: what is known of it beforehand, or else what the server
// announces. One thread at a time.
class ExpectedContent
{
public:
    explicit ExpectedContent(const std::optional<VerifiedFile> &known);

    // Takes over what an answer announces. The first to speak is the one that was asked; who it redirects to
    // only stores the bytes.
    void hear(const ResponseHead &head);
    // For another request of the same file.
    void forgetWhatWasHeard();

    // Of the whole file; 0 when unknown.
    qint64 size() const { return m_size; }
    // Whether this many bytes are more than there should be.
    bool isExceededBy(qint64 size) const { return m_size > 0 && size > m_size; }

    // What is wrong with an answer, or with the whole content: one sentence, or nothing.
    QString faultOf(const ResponseHead &head) const;
    QString faultOf(qint64 size, const QByteArray &sha256) const;

private:
    QString sizeFault(qint64 size) const;

    const std::optional<VerifiedFile> m_known;
    qint64 m_size = 0;
    QByteArray m_sha256;
};
