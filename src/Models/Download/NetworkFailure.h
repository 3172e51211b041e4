// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QNetworkReply>
#include <QString>

// The sentence that tells the user why a transfer broke off; on any thread. `detail` is the network library's
// own text for it.
QString networkFailureSentence(QNetworkReply::NetworkError error, const QString &detail);
