// SPDX-License-Identifier: Apache-2.0
#include "Models/Download/PartialFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 readSize = 1 << 20;

QJsonObject record(const PartialFile::Origin &origin)
{
    return {
        {u"url"_s, origin.url.toString(QUrl::FullyEncoded)},
        {u"entityTag"_s, QString::fromLatin1(origin.entityTag)},
        {u"lastModified"_s, QString::fromLatin1(origin.lastModified)},
        {u"length"_s, origin.length},
    };
}

} // namespace

PartialFile::Origin PartialFile::Origin::of(const QUrl &url, const ResponseHead &head)
{
    return {url, head.entityTag, head.lastModified, head.size.value_or(0)};
}

QByteArray PartialFile::Origin::validator() const
{
    // A weak tag does not promise identical bytes.
    const bool strong = !entityTag.isEmpty() && !entityTag.startsWith("W/");
    return strong ? entityTag : lastModified;
}

PartialFile::PartialFile(const QString &folder, const QString &name)
    : m_recordPath(folder + u'/' + name + u".json"_s), m_content(folder + u'/' + name + u".partial"_s),
      m_lock(folder + u'/' + name + u".lock"_s)
{
    // A download can take hours: the lock is stale only once its process has ended.
    m_lock.setStaleLockTime(0);
}

PartialFile::Lock PartialFile::lock()
{
    QDir().mkpath(QFileInfo(m_recordPath).path());
    if (m_lock.tryLock(0))
        return Lock::Taken;
    return m_lock.error() == QLockFile::LockFailedError ? Lock::HeldByAnother : Lock::Impossible;
}

bool PartialFile::canContinue(const QUrl &url) const
{
    const Origin begun = origin();
    const bool belongs = begun.length == 0 || size() <= begun.length;
    return begun.url == url && !begun.validator().isEmpty() && size() > 0 && belongs;
}

PartialFile::Origin PartialFile::origin() const
{
    QFile file(m_recordPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject stored = QJsonDocument::fromJson(file.readAll()).object();
    return {QUrl(stored[u"url"].toString()), stored[u"entityTag"].toString().toLatin1(),
            stored[u"lastModified"].toString().toLatin1(), stored[u"length"].toInteger()};
}

bool PartialFile::isContinuedBy(const ResponseHead &head) const
{
    const Origin begun = origin();
    const QByteArray validator = Origin::of(begun.url, head).validator();
    return head.firstByte == size() && (validator.isEmpty() || validator == begun.validator()) &&
           (begun.length == 0 || !head.size || head.size == begun.length);
}

bool PartialFile::startOver(const Origin &origin)
{
    // A crash in between leaves content without a record, which is never continued.
    remove();
    m_hash.reset();
    QSaveFile file(m_recordPath);
    const bool recorded = file.open(QIODevice::WriteOnly) &&
                          file.write(QJsonDocument(record(origin)).toJson()) > 0 && file.commit();
    return m_content.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) && recorded;
}

bool PartialFile::continueAtEnd(const std::stop_token &stop)
{
    m_hash.reset();
    if (!m_content.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return false;
    if (size() == origin().length && !m_content.resize(size() - 1))
        return false;
    while (!m_content.atEnd() && !stop.stop_requested()) {
        const QByteArray bytes = m_content.read(readSize);
        if (bytes.isEmpty())
            return false;
        m_hash.addData(bytes);
    }
    return !stop.stop_requested();
}

bool PartialFile::write(const QByteArray &bytes)
{
    m_hash.addData(bytes);
    // A full disk accepts part of the bytes first and reports the error only on the next write.
    for (qint64 done = 0; done < bytes.size();) {
        const qint64 taken = m_content.write(bytes.constData() + done, bytes.size() - done);
        if (taken <= 0)
            return false;
        done += taken;
    }
    return true;
}

bool PartialFile::finish()
{
    // The file must survive a power cut before it gets its final name.
    const bool safe = ::fsync(m_content.handle()) == 0;
    m_content.close();
    return safe;
}

void PartialFile::remove()
{
    m_content.close();
    m_content.remove();
    QFile::remove(m_recordPath);
}
