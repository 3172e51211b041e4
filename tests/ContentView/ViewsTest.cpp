// SPDX-License-Identifier: Apache-2.0
// Runs the view tests (tst_*.qml) with the real symbols; everything else is mocked in QML.
#include "ContentView/Controls/SymbolImages.h"

#include <QQmlEngine>
#include <QtQuickTest>

using namespace Qt::StringLiterals;

class ViewsTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine) { engine->addImageProvider(u"symbol"_s, new SymbolImages); }
};

QUICK_TEST_MAIN_WITH_SETUP(Views, ViewsTest)

#include "ViewsTest.moc"
