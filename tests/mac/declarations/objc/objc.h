// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Availability.h>

typedef bool BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr
