// SPDX-License-Identifier: Apache-2.0
#include "applications/support/TextFields.h"

#include "applications/support/HardText.h"
#include "applications/support/LocalSite.h"
#include "applications/support/PrivateDesktop.h"
#include "applications/support/Screen.h"

#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

void TextFields::addEditors()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("windowClass");
    QTest::newRow("GTK") << u"mousepad"_s << u"Mousepad"_s;
    QTest::newRow("Qt") << u"featherpad"_s << u"FeatherPad"_s;
}

bool TextFields::openFile(const QString &path, const QByteArray &content, const QString &program,
                          const QString &windowClass)
{
    PrivateDesktop::write(path, content);
    const QString name = QFileInfo(path).fileName();
    return PrivateDesktop::open(program, {path}, windowClass) &&
           QTest::qWaitFor([&name] { return Screen::showsTitle(name); }, PrivateDesktop::patience);
}

QString TextFields::differenceInFile(const QString &path, const QString &text)
{
    QString arrived;
    const auto isThere = [&] {
        arrived = QString::fromUtf8(PrivateDesktop::read(path));
        // Editors may add a final line break when saving.
        return arrived == text || arrived == text + u'\n';
    };
    return QTest::qWaitFor(isThere, PrivateDesktop::patience) ? QString()
                                                              : HardText::difference(text, arrived);
}

void TextFields::addPage(LocalSite &site)
{
    site.setPage(u"/notes"_s, u"Notes"_s,
                 u"<textarea rows='20' cols='80' autofocus onfocus=\"report('ready')\" "
                 "oninput=\"report(this.value)\"></textarea>"_s);
}
