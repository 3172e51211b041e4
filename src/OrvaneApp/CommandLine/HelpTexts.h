// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

// Output of `--help`; each text ends with a line break.
namespace HelpTexts {

QString general();
QString doCommand();
QString modelsCommand();
QString doctorCommand();
QString integrateCommand();

} // namespace HelpTexts
