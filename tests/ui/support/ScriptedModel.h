// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

// Model files with known replies, for the program's real engine.
namespace ScriptedModel {

// Always gives this reply, so that a run ends at its second step as a repetition.
void writeAnswering(const QByteArray &reply, const QString &path);

// Replies "abab…", which is not a plan, up to the token limit. Each token costs a pass over all weights,
// whose number grows with `headSize`: at 4,096 a reply takes one or two seconds.
void writeBabbling(const QString &path, int headSize = 4096);

} // namespace ScriptedModel
