// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QUrl>

// Whether nobody on the way can change what comes from this address: it is reached over HTTPS, or on this
// very computer. By the address alone; on any thread.
bool isSecureAddress(const QUrl &url);

// Whether a redirect leads to such an address, and to one that is reached no less safely than before.
bool isSafeRedirect(const QUrl &from, const QUrl &to);
