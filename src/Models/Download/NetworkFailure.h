// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QNetworkReply>
#include <QString>

// The user-visible sentence for a failed transfer. `detail` is Qt's error text. Any thread.
QString networkFailureSentence(QNetworkReply::NetworkError error, const QString &detail);
