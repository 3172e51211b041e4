// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ContentView/ViewModels/ContentViewModel.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

// Makes the program's one window out of its views. Main thread; the program has to import the QML plugin of
// Orvane.ContentView.
namespace MainWindow {

// A window, not shown yet, that uses the engine and the content as long as it lives. Null when the views
// cannot be loaded; why is in Qt's log then. `properties` are those of the window, such as "dark".
std::unique_ptr<QQuickWindow> make(QQmlEngine &engine, ContentViewModel &content, QVariantMap properties);

} // namespace MainWindow
