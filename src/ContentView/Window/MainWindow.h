// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ContentView/ViewModels/ContentViewModel.h"

#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

// Creates the main window. Thread: main. The program must import the QML plug-in Orvane.ContentView.
namespace MainWindow {

// Returns a hidden window that uses `engine` and `content`, which must outlive it; or null if the views
// cannot be loaded, with the reason in Qt's log. `properties` are the window's, such as "dark".
std::unique_ptr<QQuickWindow> make(QQmlEngine &engine, ContentViewModel &content, QVariantMap properties);

} // namespace MainWindow
