// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Firefox on the private desktop. Requires a QGuiApplication, for the clipboard. Thread: main.
namespace Browser {

inline constexpr auto windowClass = "firefox-esr";

bool isShown();
bool isActive();

// Whether a page with this title is in its active tab.
bool showsPage(const QString &title);

// Configures a local proxy for all other hosts. Call it before Firefox starts.
void useProxy(quint16 port);

// The address bar's text, copied through the clipboard. The browser must be frontmost.
QString address();

} // namespace Browser
