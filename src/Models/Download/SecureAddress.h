// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QUrl>

// Whether the URL is safe from tampering in transit: HTTPS, or HTTP on the loopback interface. Looks at the
// URL only. Any thread.
bool isSecureAddress(const QUrl &url);

// Whether the target of a redirect is secure, and no less so than its origin.
bool isSafeRedirect(const QUrl &from, const QUrl &to);
