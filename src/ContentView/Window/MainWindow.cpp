// SPDX-License-Identifier: Apache-2.0
#include "ContentView/Window/MainWindow.h"

#include "ContentView/Controls/SymbolImages.h"

#include <QQmlComponent>

using namespace Qt::StringLiterals;

std::unique_ptr<QQuickWindow> MainWindow::make(QQmlEngine &engine, ContentViewModel &content,
                                               QVariantMap properties)
{
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.addImageProvider(u"symbol"_s, new SymbolImages);
    // Allows a translucent background; the alpha channel cannot be added later.
    QQuickWindow::setDefaultAlphaBuffer(true);
    properties.insert(u"content"_s, QVariant::fromValue(&content));
    QQmlComponent component(&engine);
    // The import registers the types that the views use.
    component.setData("import Orvane.ContentView\nMain {}", QUrl());
    std::unique_ptr<QObject> object;
    if (component.isReady())
        object.reset(component.createWithInitialProperties(properties));
    auto *window = qobject_cast<QQuickWindow *>(object.get());
    if (!window) {
        qWarning("%s", qPrintable(component.errorString()));
        return nullptr;
    }
    [[maybe_unused]] QObject *given = object.release();
    return std::unique_ptr<QQuickWindow>(window);
}
