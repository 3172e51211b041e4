// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's C library lists here what it lacks on its own processor; nothing of it concerns the check.
