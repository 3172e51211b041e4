// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's C library asks the processor for this, and does not know the one that is checked for.
#define __WORDSIZE 64
#define __WORDSIZE_TIME64_COMPAT32 1
