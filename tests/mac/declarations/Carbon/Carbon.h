// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/HotKeys.h>
