// SPDX-License-Identifier: Apache-2.0
#include "SampleDocument.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

// Launchers pass URLs, users pass paths.
QString localPath(const QString &argument)
{
    return argument.startsWith(u"file://"_s) ? QUrl(argument).toLocalFile() : argument;
}

} // namespace

SampleDocument::SampleDocument(const QString &path) : m_path(localPath(path))
{
    QFile file(m_path);
    if (!m_path.isEmpty() && file.open(QIODevice::ReadOnly))
        m_savedText = QString::fromUtf8(file.readAll());
}

QString SampleDocument::name() const
{
    return m_path.isEmpty() ? u"Untitled"_s : QFileInfo(m_path).fileName();
}

void SampleDocument::save(const QString &text)
{
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        return;
    file.close();
    m_savedText = text;
    Q_EMIT saved();
}
