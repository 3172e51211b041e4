// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

// Whether the process exists and isn't a zombie. Any thread.
bool isRunningProcess(qint64 process);
