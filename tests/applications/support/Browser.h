// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Firefox on the private desktop. Main thread, with a QGuiApplication (it reads the clipboard).
namespace Browser {

inline constexpr auto windowClass = "firefox-esr";

bool isShown();
bool isActive();

// Whether its window shows a page of that title in the foremost tab.
bool showsPage(const QString &title);

// Sends everything but this machine to the proxy on that port; before Firefox starts.
void useProxy(quint16 port);

// The address in the address bar, taken through the clipboard; the browser has to be in front.
QString address();

} // namespace Browser
