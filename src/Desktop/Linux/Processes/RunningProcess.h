// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

// Whether the process exists and has not ended; one that only waits for its parent to notice has. Any thread.
bool isRunningProcess(qint64 process);
