// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

// Model files whose replies are known, for the program's real engine.
namespace ScriptedModel {

// Answers every time with this text, so that a run ends at its second step as a repetition.
void writeAnswering(const QByteArray &reply, const QString &path);

// Says "abab…", which is no plan, as long as it may, and takes seconds over it.
void writeBabbling(const QString &path);

} // namespace ScriptedModel
