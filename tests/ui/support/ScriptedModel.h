// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

// Model files whose replies are known, for the program's real engine.
namespace ScriptedModel {

// Answers every time with this text, so that a run ends at its second step as a repetition.
void writeAnswering(const QByteArray &reply, const QString &path);

// Says "abab…", which is no plan, as long as it may. Every token costs a pass over all weights, whose number
// grows with the head's size: at 4,096 a reply takes a second or two.
void writeBabbling(const QString &path, int headSize = 4096);

} // namespace ScriptedModel
