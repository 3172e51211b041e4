// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/ExpectedContent.h"

using namespace Qt::StringLiterals;

ExpectedContent::ExpectedContent(const std::optional<VerifiedFile> &known) : m_known(known)
{
    discardAnnounced();
}

void ExpectedContent::adopt(const ResponseHead &head)
{
    if (m_size == 0)
        m_size = head.size.value_or(0);
    if (m_sha256.isEmpty())
        m_sha256 = head.sha256;
}

void ExpectedContent::discardAnnounced()
{
    m_size = m_known ? m_known->size : 0;
    m_sha256 = m_known ? m_known->sha256 : QByteArray();
}

QString ExpectedContent::faultOf(const ResponseHead &head) const
{
    return head.size ? sizeFault(*head.size) : QString();
}

QString ExpectedContent::faultOf(qint64 size, const QByteArray &sha256) const
{
    const QString fault = sizeFault(size);
    if (!fault.isEmpty() || m_sha256.isEmpty() || sha256 == m_sha256)
        return fault;
    return m_known ? u"The download is damaged: its SHA-256 isn't the one that this model has."_s
                   : u"The download is damaged: its SHA-256 isn't the one that the server announced."_s;
}

QString ExpectedContent::sizeFault(qint64 size) const
{
    if (m_size == 0 || size == m_size)
        return {};
    return u"The download has the wrong size: %1 bytes instead of %2."_s.arg(size).arg(m_size);
}
