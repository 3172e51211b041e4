// SPDX-License-Identifier: Apache-2.0
#include "KeyReport.h"

#include <QKeySequence>

KeyReport::KeyReport(const QString &path) : m_file(path)
{
    if (!path.isEmpty() && !m_file.open(QIODevice::WriteOnly))
        qFatal("%s cannot be written", qPrintable(path));
}

QString KeyReport::add(int key, int modifiers)
{
    const QString name = QKeySequence(key | modifiers).toString(QKeySequence::PortableText);
    if (m_file.isOpen()) {
        m_file.write(name.toUtf8() + '\n');
        m_file.flush();
    }
    return name;
}
